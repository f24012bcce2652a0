// One number that changes with time: keys, and the values between, before and after them.
#pragma once

#include "fbxsdk/base/FbxObject.h"
#include "fbxsdk/base/FbxTime.h"

#include <cstdint>
#include <memory>
#include <vector>

// The ways of keys and curves, with the numbers that files have for them.
struct FbxAnimCurveDef
{
    // How values between a key and the next are made.
    enum EInterpolationType : uint32_t
    {
        eInterpolationConstant = 0x2,
        eInterpolationLinear = 0x4,
        eInterpolationCubic = 0x8
    };
    // Which of the two keys a constant stretch takes its value from.
    enum EConstantMode : uint32_t
    {
        eConstantStandard = 0x000, // the earlier one
        eConstantNext = 0x100
    };
    // Where the slopes of a cubic key come from; a combination of bits.
    enum ETangentMode : uint32_t
    {
        eTangentAuto = 0x100,         // from its neighbours
        eTangentTCB = 0x200,          // from its neighbours and tension, continuity and bias
        eTangentUser = 0x400,         // as the file says
        eTangentGenericBreak = 0x800, // left and right slope differ
        // Of automatic ones: flat where a neighbour has the same value; the slope from neighbour to neighbour
        // instead of the mean of the slopes to either; never beyond the values of the neighbours.
        eTangentGenericClamp = 0x1000,
        eTangentGenericTimeIndependent = 0x2000,
        eTangentGenericClampProgressive = 0x4000
    };
    // Which of the two inner points of the stretch behind a key are placed by weights, not at a third.
    enum EWeightedMode : uint32_t
    {
        eWeightedNone = 0x00000000,
        eWeightedRight = 0x01000000,
        eWeightedNextLeft = 0x02000000,
        eWeightedAll = eWeightedRight | eWeightedNextLeft
    };
    // How the curve goes on outside of its keys.
    enum EExtrapolationType : uint32_t
    {
        eConstant = 1, // the value of the first or last key
        eRepetition = 2,
        eMirrorRepetition = 3, // every other time backwards
        eKeepSlope = 4,
        eRelativeRepetition = 5 // each time from where the last one ended
    };
};

// The stretch between a key and the next, as a Bezier curve of (seconds, value) points: a key, the point that
// its curve leaves towards, the point that it comes from, the next key. The inner points of a linear one lie
// on the line; those of a constant one have no meaning.
struct FbxAnimCurveSegment
{
    FbxAnimCurveDef::EInterpolationType eInterpolation = FbxAnimCurveDef::eInterpolationLinear;
    bool bConstantNext = false; // constant, at the value of the next key
    double dTime0 = 0, dValue0 = 0;
    double dOutTime = 0, dOutValue = 0;
    double dInTime = 0, dInValue = 0;
    double dTime1 = 0, dValue1 = 0;
};

// A key whose slopes are known.
struct FbxAnimCurveKey
{
    int64_t nTime = 0; // FbxTime ticks
    double dValue = 0;
    uint32_t uiFlags = 0; // those of FbxAnimCurveDef; weights are in use where their bits are set
    // In values a second; that of straight and constant stretches, too.
    float fLeftSlope = 0;
    float fRightSlope = 0;
    // How far the inner points of the stretches are, as parts of the stretches, 0 to 1.
    float fLeftWeight = 0;
    float fRightWeight = 0;
};

// Values in the units of the property (degrees, file units). Keys are in strictly ascending order of their
// times.
class FbxAnimCurve final : public FbxObject
{
  public:
    struct SExtrapolation
    {
        FbxAnimCurveDef::EExtrapolationType eType = FbxAnimCurveDef::eConstant;
        int32_t nCount = -1; // repetitions; negative: without end
    };

    // From an "AnimationCurve" record or the "Channel" record of a take. Null (reported) when its keys are
    // damaged. A curve without keys has its default value at all times.
    static std::unique_ptr<FbxAnimCurve> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // For a key, 0 <= n < KeyGetCount().
    int KeyGetCount() const { return static_cast<int>(m_vecKeys.size()); }
    FbxTime KeyGetTime(int n) const { return FbxTime(GetKey(n).nTime); }
    double KeyGetValue(int n) const { return GetKey(n).dValue; }
    // Of the stretch behind the key.
    FbxAnimCurveDef::EInterpolationType KeyGetInterpolation(int n) const
    {
        return GetInterpolation(GetKey(n).uiFlags);
    }
    FbxAnimCurveDef::EConstantMode KeyGetConstantMode(int n) const;

    const SExtrapolation& GetPreExtrapolation() const { return m_objPre; }
    const SExtrapolation& GetPostExtrapolation() const { return m_objPost; }

    // The stretch from key n to key n + 1; 0 <= n < KeyGetCount() - 1.
    FbxAnimCurveSegment GetSegment(int n) const;

    // The value at a time. A caller that asks for one time after the other keeps *pLast (first 0) between the
    // calls and saves the search.
    double Evaluate(FbxTime objTime, int* pLast = nullptr) const;

    // Of key flags.
    static FbxAnimCurveDef::EInterpolationType GetInterpolation(uint32_t uiFlags);

  private:
    explicit FbxAnimCurve(const CFBXObject* pObject) : FbxObject(pObject) {}

    const FbxAnimCurveKey& GetKey(int n) const { return m_vecKeys[static_cast<size_t>(n)]; }
    double EvaluateWithinKeys(int64_t nTime, int* pLast) const;
    double EvaluateOutside(int64_t nTime, const SExtrapolation& rExtrapolation, int* pLast) const;
    size_t FindSegment(int64_t nTime, int* pLast) const;

    std::vector<FbxAnimCurveKey> m_vecKeys;
    double m_dDefault = 0;
    SExtrapolation m_objPre;
    SExtrapolation m_objPost;
};
