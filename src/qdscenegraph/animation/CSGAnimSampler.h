// The keys of one animation curve, and the curve's values at any time.
#pragma once

#include "qdscenegraph/geometry/CSGBulkArray.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

#include <span>

// A key is one record of floats: its time in seconds, then one value for each output and, for Bezier curves,
// a (time, value) pair for each output's in-tangent and one for each output's out-tangent. Tangents are
// control points in the curve's own space, not slopes. Whoever fills the keys does so in ascending order of
// their times.
class CSGAnimSampler final : public SGStreamableInterface<CSGAnimSampler>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGAnimSampler";

    // How values between two keys are made. A file may hold other numbers: such a curve has no values
    // between its keys.
    enum EInterpType : int32_t
    {
        INTERP_STEP = 1, // those of the earlier key
        INTERP_LINEAR = 2,
        INTERP_BEZIER = 3,     // cubic, in time as well as in value
        INTERP_QUATERNION = 4, // four outputs x, y, z, w of unit length, on the shorter arc
    };

    // Keys of zeros. Null (reported) for a negative count and when there is not enough memory.
    static boost::intrusive_ptr<CSGAnimSampler> Create(int32_t nKeyCount, int32_t nOutputCount,
                                                       EInterpType eInterpType);

    int32_t GetKeyCount() const { return m_nKeyCount; }
    int32_t GetOutputCount() const { return m_nOutputCount; }
    EInterpType GetInterpType() const { return m_eInterpType; }

    // Fills all keys: a time a key, a value a key and output, key after key, and in either tangent array a
    // pair (time, value) a key and output. Tangents are used by Bezier curves alone. False (reported), with
    // the keys as they were, for an array of another length.
    bool SetKeyData(std::span<const float> arrfTimes, std::span<const float> arrfOutputValues,
                    std::span<const float> arrfInTangentValues = {},
                    std::span<const float> arrfOutTangentValues = {});

    // One float of a key. False and 0 (reported) when there is no such key or output, and for the tangents
    // of a curve that is no Bezier curve.
    bool SetKeyTime(int32_t nKey, float fTime);
    bool SetKeyValue(int32_t nKey, int32_t nOutput, float fValue);
    bool SetKeyInTangentTime(int32_t nKey, int32_t nOutput, float fTime);
    bool SetKeyInTangentValue(int32_t nKey, int32_t nOutput, float fValue);
    bool SetKeyOutTangentTime(int32_t nKey, int32_t nOutput, float fTime);
    bool SetKeyOutTangentValue(int32_t nKey, int32_t nOutput, float fValue);
    float GetKeyTime(int32_t nKey) const;
    float GetKeyValue(int32_t nKey, int32_t nOutput) const;
    float GetKeyInTangentTime(int32_t nKey, int32_t nOutput) const;
    float GetKeyInTangentValue(int32_t nKey, int32_t nOutput) const;
    float GetKeyOutTangentTime(int32_t nKey, int32_t nOutput) const;
    float GetKeyOutTangentValue(int32_t nKey, int32_t nOutput) const;

    // The first and the last key's time; 0 (reported) without keys.
    float GetBeginTime() const;
    float GetEndTime() const;

    // Writes a float for each output, whose number is given again as a check. Before the first and behind
    // the last key the values are those of that key. False (reported) without keys, and where Interpolate
    // fails.
    bool SampleAtTime(float fTime, float* arrfOutputValues, int32_t nOutputValueCount) const;
    // The record of the last key whose time is not above the given one, of the first key when there is none;
    // null (reported) without keys.
    const float* FindLatestKeyBeforeTime(float fTime) const;
    // The values at a time between a key, given as its record, and the next. False (reported) for the last
    // key, for a quaternion that has not four values, and for an unknown type.
    bool Interpolate(float fTime, const float* pfPrevKey, float* arrfOutputValues) const;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Every key.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    // The floats that a key has for each output.
    enum EKeyPart
    {
        PART_VALUE,
        PART_IN_TANGENT_TIME,
        PART_IN_TANGENT_VALUE,
        PART_OUT_TANGENT_TIME,
        PART_OUT_TANGENT_VALUE,
    };

    // Takes the memory for the keys, which stay unset. False (reported), without a change, where that fails.
    bool InitKeyData(int32_t nKeyCount, int32_t nOutputCount, EInterpType eInterpType);
    // The floats of a key record; more than an int32 holds for absurd numbers of outputs.
    static int64_t CalcKeyStride(int32_t nOutputCount, EInterpType eInterpType)
    {
        return 1 + (eInterpType == INTERP_BEZIER ? int64_t{5} : int64_t{1}) * nOutputCount;
    }
    // Where the tangents begin in a key record.
    size_t GetInTangentOffset() const { return 1 + static_cast<size_t>(m_nOutputCount); }
    size_t GetOutTangentOffset() const { return 1 + 3 * static_cast<size_t>(m_nOutputCount); }
    // The record of a key that is there.
    const float* KeyAt(int32_t nKey) const
    {
        return m_arrfKeyData.data() + static_cast<size_t>(nKey) * static_cast<size_t>(m_nKeyStride);
    }
    // Null when there is no such key.
    const float* FindKey(int32_t nKey) const
    {
        return nKey >= 0 && nKey < m_nKeyCount ? KeyAt(nKey) : nullptr;
    }
    // Null (reported) when the key, the output or the part is not there.
    const float* FindKeyPart(int32_t nKey, int32_t nOutput, EKeyPart ePart) const;
    float GetKeyPart(int32_t nKey, int32_t nOutput, EKeyPart ePart) const;
    bool SetKeyPart(int32_t nKey, int32_t nOutput, EKeyPart ePart, float fPart);
    void InterpolateBezier(float fTime, const float* pfPrevKey, const float* pfNextKey,
                           float* arrfOutputValues) const;
    bool ReadVersion1(CStream* pStream);
    bool ReadVersion2(CStream* pStream);

    int32_t m_nKeyCount = 0;
    int32_t m_nOutputCount = 0;
    EInterpType m_eInterpType = INTERP_STEP;
    int32_t m_nKeyStride = 0;
    CSGBulkArray<float> m_arrfKeyData;
};
