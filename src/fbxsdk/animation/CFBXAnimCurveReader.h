// The keys of an animation curve as files have them.
#pragma once

#include "fbxsdk/animation/FbxAnimCurve.h"

#include <cstdint>
#include <vector>

class CFBXRecord;

// A key before the slopes that hang on its neighbours are known.
struct CFBXAnimKey
{
    static constexpr float DEFAULT_WEIGHT = 1.0f / 3;

    int64_t nTime = 0; // FbxTime ticks
    double dValue = 0;
    uint32_t uiFlags = 0; // those of FbxAnimCurveDef
    // User tangents: slopes behind this key and in front of the next. Automatic ones: the artist's bias on
    // either. Tension and continuity of a TCB key.
    float fRight = 0;
    float fNextLeft = 0;
    float fTCBBias = 0;
    float fRightWeight = DEFAULT_WEIGHT;
    float fNextLeftWeight = DEFAULT_WEIGHT;
};

class CFBXAnimCurveReader
{
  public:
    // Times keep so far from the ends of 64 bits that the difference of two can be taken.
    static constexpr int64_t MAX_TIME = int64_t(1) << 61;

    CFBXAnimCurveReader(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // Of an "AnimationCurve" record or the "Channel" record of a take. False (reported) when the keys are
    // damaged.
    bool Read();

    // Values as large as floats can be, times in strictly ascending order.
    const std::vector<CFBXAnimKey>& GetKeys() const { return m_vecKeys; }
    double GetDefault() const { return m_dDefault; }
    const FbxAnimCurve::SExtrapolation& GetPreExtrapolation() const { return m_objPre; }
    const FbxAnimCurve::SExtrapolation& GetPostExtrapolation() const { return m_objPost; }

  private:
    bool ReadKeyArrays();
    bool ReadKeyAttributes();
    bool ReadKeyRow(const CFBXRecord& rRow);
    void SortKeys();
    FbxAnimCurve::SExtrapolation ReadExtrapolation(const char* szRecord) const;

    const CFBXObjectTable& m_rTable;
    const CFBXObject& m_rObject;
    std::vector<CFBXAnimKey> m_vecKeys;
    double m_dDefault = 0;
    FbxAnimCurve::SExtrapolation m_objPre;
    FbxAnimCurve::SExtrapolation m_objPost;
};
