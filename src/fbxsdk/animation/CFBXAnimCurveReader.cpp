#include "fbxsdk/animation/CFBXAnimCurveReader.h"

#include "fbxsdk/base/CFBXTimeScale.h"
#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <span>

namespace
{

using Def = FbxAnimCurveDef;

constexpr size_t ATTRIBUTE_NUMBERS = 4;
constexpr double WEIGHT_UNITS = 9999; // a weight of 1 in files
constexpr unsigned WEIGHT_BITS = 16;
constexpr double MAX_VALUE = std::numeric_limits<float>::max();

float ToWeight(double dWeight) { return static_cast<float>(std::clamp(dWeight, 0.0, 1.0)); }

// Two weights share the bits of a number, that behind the key below that in front of the next.
float UnpackWeight(uint32_t uiBits) { return ToWeight((uiBits & 0xFFFFu) / WEIGHT_UNITS); }

// The numbers of the attributes are floats, in some ASCII files printed as the whole numbers of their bits.
// Real values never are all whole and so big.
void RestoreFloats(std::vector<double>& rNumbers)
{
    constexpr double FAR_BEYOND_SLOPES = 1 << 20;
    constexpr double MAX_BITS = 4294967296.0;
    const bool bAllWhole =
        std::ranges::all_of(rNumbers, [](double d) { return d == std::trunc(d) && std::abs(d) < MAX_BITS; });
    if (bAllWhole && std::ranges::any_of(rNumbers, [](double d) { return std::abs(d) >= FAR_BEYOND_SLOPES; }))
    {
        for (double& rNumber : rNumbers)
        {
            const int64_t nBits = static_cast<int64_t>(rNumber);
            rNumber = static_cast<double>(std::bit_cast<float>(static_cast<uint32_t>(nBits)));
        }
    }
}

void SetAttributes(CFBXAnimKey& rKey, uint32_t uiFlags, std::span<const double> arrNumbers)
{
    rKey.uiFlags = uiFlags;
    if (arrNumbers.size() < ATTRIBUTE_NUMBERS)
    {
        return;
    }
    const float fThird = static_cast<float>(arrNumbers[2]);
    rKey.fRight = static_cast<float>(arrNumbers[0]);
    rKey.fNextLeft = static_cast<float>(arrNumbers[1]);
    if ((uiFlags & Def::eTangentTCB) != 0)
    {
        rKey.fTCBBias = fThird;
        return;
    }
    const uint32_t uiWeights = std::bit_cast<uint32_t>(fThird);
    if ((uiFlags & Def::eWeightedRight) != 0)
    {
        rKey.fRightWeight = UnpackWeight(uiWeights);
    }
    if ((uiFlags & Def::eWeightedNextLeft) != 0)
    {
        rKey.fNextLeftWeight = UnpackWeight(uiWeights >> WEIGHT_BITS);
    }
}

char GetLetter(const CFBXValue& rValue)
{
    const std::string_view strText = rValue.GetString();
    return strText.size() == 1 ? strText[0] : '\0';
}

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }

// What stands behind the time and the value of a key in a row: a capital for the interpolation, then small
// letters for modes, each with its numbers.
class CKeyWords
{
  public:
    explicit CKeyWords(std::span<const CFBXValue> arrWords) : m_arrWords(arrWords) {}

    // 0 at the end and where there is a number.
    char NextLetter() { return m_nNext < m_arrWords.size() ? GetLetter(m_arrWords[m_nNext++]) : '\0'; }
    bool IsNumberNext() const { return m_nNext < m_arrWords.size() && m_arrWords[m_nNext].IsNumber(); }
    double NextNumber() { return IsNumberNext() ? m_arrWords[m_nNext++].GetDouble() : 0; }
    void SkipNumbers()
    {
        while (IsNumberNext())
        {
            ++m_nNext;
        }
    }

  private:
    std::span<const CFBXValue> m_arrWords;
    size_t m_nNext = 0;
};

uint32_t GetTangentMode(char c)
{
    switch (c)
    {
    case 'a': // what today's exporters write to old files for keys that are flat at the ends and tops
    case 'p':
        return Def::eTangentAuto | Def::eTangentGenericTimeIndependent | Def::eTangentGenericClampProgressive;
    case 't':
        return Def::eTangentTCB;
    case 'b':
        return Def::eTangentUser | Def::eTangentGenericBreak;
    default:
        return Def::eTangentUser;
    }
}

void SetCubic(CFBXAnimKey& rKey, CKeyWords& rWords)
{
    rKey.uiFlags = Def::eInterpolationCubic | GetTangentMode(rWords.NextLetter());
    rKey.fRight = static_cast<float>(rWords.NextNumber());
    rKey.fNextLeft = static_cast<float>(rWords.NextNumber());
    rKey.fTCBBias = static_cast<float>(rWords.NextNumber());
    rWords.SkipNumbers();
    const char cWeights = rWords.NextLetter();
    if (cWeights == 'a' || cWeights == 'r')
    {
        rKey.uiFlags |= Def::eWeightedRight;
        rKey.fRightWeight = ToWeight(rWords.NextNumber());
    }
    if (cWeights == 'a' || cWeights == 'l')
    {
        rKey.uiFlags |= Def::eWeightedNextLeft;
        rKey.fNextLeftWeight = ToWeight(rWords.NextNumber());
    }
}

void SetInterpolation(CFBXAnimKey& rKey, std::span<const CFBXValue> arrWords)
{
    CKeyWords objWords(arrWords);
    switch (objWords.NextLetter())
    {
    case 'C':
        rKey.uiFlags = Def::eInterpolationConstant;
        rKey.uiFlags |= objWords.NextLetter() == 'n' ? Def::eConstantNext : Def::eConstantStandard;
        break;
    case 'L':
        rKey.uiFlags = Def::eInterpolationLinear;
        break;
    default:
        SetCubic(rKey, objWords);
        break;
    }
}

} // namespace

CFBXAnimCurveReader::CFBXAnimCurveReader(const CFBXObjectTable& rTable, const CFBXObject& rObject)
    : m_rTable(rTable),
      m_rObject(rObject)
{}

bool CFBXAnimCurveReader::Read()
{
    const CFBXRecord* pRecord = m_rObject.pRecord;
    if (pRecord == nullptr)
    {
        return true;
    }
    m_dDefault = pRecord->GetChildDouble("Default");
    if (!(std::abs(m_dDefault) <= MAX_VALUE))
    {
        m_dDefault = 0;
    }
    m_objPre = ReadExtrapolation("Pre-Extrapolation");
    m_objPost = ReadExtrapolation("Post-Extrapolation");

    const CFBXRecord* pRow = pRecord->FindChild("Key");
    if (!(pRow != nullptr ? ReadKeyRow(*pRow) : ReadKeyArrays()))
    {
        return false;
    }
    const size_t nDropped = std::erase_if(m_vecKeys, [](const CFBXAnimKey& rKey) {
        return !(std::abs(rKey.dValue) <= MAX_VALUE) || !std::isfinite(rKey.fRight) ||
               !std::isfinite(rKey.fNextLeft) || !std::isfinite(rKey.fTCBBias);
    });
    if (nDropped != 0)
    {
        Log(FBXSDK, LOG_WARNING, "Animation curve %s: %d keys that are no numbers are left out",
            pRecord->Describe(), static_cast<int>(nDropped));
    }
    SortKeys();
    return true;
}

bool CFBXAnimCurveReader::ReadKeyArrays()
{
    const CFBXRecord& rRecord = *m_rObject.pRecord;
    const CFBXRecord* pTimes = rRecord.FindChild("KeyTime");
    const CFBXRecord* pValues = rRecord.FindChild("KeyValueFloat");
    std::vector<int64_t> vecTimes;
    std::vector<double> vecValues;
    if (pTimes == nullptr)
    {
        return true;
    }
    if (!pTimes->ReadInt64s(vecTimes) || (pValues != nullptr && !pValues->ReadDoubles(vecValues)))
    {
        return false;
    }
    if (vecTimes.size() != vecValues.size())
    {
        Log(FBXSDK, LOG_WARNING,
            "Animation curve %s has %d times and %d values: the rest of them is left out", rRecord.Describe(),
            static_cast<int>(vecTimes.size()), static_cast<int>(vecValues.size()));
    }
    const CFBXTimeScale objTimeScale(m_rTable);
    m_vecKeys.resize(std::min(vecTimes.size(), vecValues.size()));
    for (size_t n = 0; n < m_vecKeys.size(); ++n)
    {
        m_vecKeys[n].nTime = objTimeScale(vecTimes[n]).Get();
        m_vecKeys[n].dValue = vecValues[n];
    }
    return ReadKeyAttributes();
}

// Keys that follow each other and are alike share one set of attributes, with a count.
bool CFBXAnimCurveReader::ReadKeyAttributes()
{
    const CFBXRecord& rRecord = *m_rObject.pRecord;
    std::vector<int32_t> vecFlags;
    std::vector<int32_t> vecCounts;
    std::vector<double> vecNumbers;
    const auto Read = [&rRecord](const char* szName, auto& rVector, auto Method) {
        const CFBXRecord* pChild = rRecord.FindChild(szName);
        return pChild == nullptr || (pChild->*Method)(rVector);
    };
    if (!Read("KeyAttrFlags", vecFlags, &CFBXRecord::ReadInts) ||
        !Read("KeyAttrDataFloat", vecNumbers, &CFBXRecord::ReadDoubles) ||
        !Read("KeyAttrRefCount", vecCounts, &CFBXRecord::ReadInts))
    {
        return false;
    }
    if (vecFlags.empty())
    {
        vecFlags.push_back(Def::eInterpolationLinear);
    }
    RestoreFloats(vecNumbers);

    size_t nKey = 0;
    for (size_t nSet = 0; nSet < vecFlags.size() && nKey < m_vecKeys.size(); ++nSet)
    {
        const bool bLast = nSet + 1 == vecFlags.size();
        const size_t nBegin = std::min(nSet * ATTRIBUTE_NUMBERS, vecNumbers.size());
        const size_t nCount = nSet < vecCounts.size() && vecCounts[nSet] > 0
                                  ? static_cast<size_t>(vecCounts[nSet])
                                  : size_t(vecCounts.empty());
        const size_t nEnd = bLast ? m_vecKeys.size() : nKey + std::min(nCount, m_vecKeys.size() - nKey);
        for (; nKey < nEnd; ++nKey)
        {
            SetAttributes(m_vecKeys[nKey], static_cast<uint32_t>(vecFlags[nSet]),
                          std::span<const double>(vecNumbers).subspan(nBegin));
        }
    }
    return true;
}

// "time, value, U, s, slope, slope, n, time, value, L, ...": each key is all from two numbers in front of a
// capital.
bool CFBXAnimCurveReader::ReadKeyRow(const CFBXRecord& rRow)
{
    constexpr size_t WORDS_IN_FRONT = 2;
    const std::span<const CFBXValue> arrWords = rRow.GetValues();
    const CFBXTimeScale objTimeScale(m_rTable);
    for (size_t nBegin = 0, nEnd = 0; nBegin < arrWords.size(); nBegin = nEnd)
    {
        const size_t nCapital = nBegin + WORDS_IN_FRONT;
        if (nCapital >= arrWords.size() || !arrWords[nBegin].IsNumber() || !arrWords[nBegin + 1].IsNumber() ||
            !IsUpper(GetLetter(arrWords[nCapital])))
        {
            Log(FBXSDK, LOG_ERROR, "Key %d of animation curve %s is damaged",
                static_cast<int>(m_vecKeys.size()), rRow.Describe());
            return false;
        }
        nEnd = nCapital + 1;
        while (nEnd < arrWords.size() && !IsUpper(GetLetter(arrWords[nEnd])))
        {
            ++nEnd;
        }
        if (nEnd < arrWords.size())
        {
            nEnd = std::max(nEnd - WORDS_IN_FRONT, nCapital + 1);
        }
        CFBXAnimKey& rKey = m_vecKeys.emplace_back();
        rKey.nTime = objTimeScale(arrWords[nBegin].GetInt64()).Get();
        rKey.dValue = arrWords[nBegin + 1].GetDouble();
        SetInterpolation(rKey, arrWords.subspan(nCapital, nEnd - nCapital));
    }
    return true;
}

// The later of two keys at the same time is the one that was meant.
void CFBXAnimCurveReader::SortKeys()
{
    for (CFBXAnimKey& rKey : m_vecKeys)
    {
        rKey.nTime = std::clamp(rKey.nTime, -MAX_TIME, MAX_TIME);
    }
    const auto IsNotBefore = [](const CFBXAnimKey& a, const CFBXAnimKey& b) { return a.nTime >= b.nTime; };
    if (std::ranges::adjacent_find(m_vecKeys, IsNotBefore) == m_vecKeys.end())
    {
        return;
    }
    Log(FBXSDK, LOG_WARNING, "Animation curve %s: its keys are not in the order of their times",
        m_rObject.pRecord->Describe());
    std::ranges::reverse(m_vecKeys);
    std::ranges::stable_sort(m_vecKeys, {}, &CFBXAnimKey::nTime);
    const auto objRest = std::ranges::unique(m_vecKeys, {}, &CFBXAnimKey::nTime);
    m_vecKeys.erase(objRest.begin(), objRest.end());
}

FbxAnimCurve::SExtrapolation CFBXAnimCurveReader::ReadExtrapolation(const char* szRecord) const
{
    FbxAnimCurve::SExtrapolation objExtrapolation;
    const CFBXRecord* pRecord = m_rObject.pRecord->FindChild(szRecord);
    if (pRecord == nullptr)
    {
        return objExtrapolation;
    }
    const std::string_view strType = pRecord->GetChildString("Type");
    switch (strType.empty() ? '\0' : strType[0])
    {
    case 'R':
        objExtrapolation.eType = Def::eRepetition;
        break;
    case 'M':
        objExtrapolation.eType = Def::eMirrorRepetition;
        break;
    case 'K':
        objExtrapolation.eType = Def::eKeepSlope;
        break;
    case 'A':
        objExtrapolation.eType = Def::eRelativeRepetition;
        break;
    default:
        break;
    }
    objExtrapolation.nCount =
        static_cast<int32_t>(std::clamp<int64_t>(pRecord->GetChildInt64("Repetition", -1), -1, INT32_MAX));
    return objExtrapolation;
}
