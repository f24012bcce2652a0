// Curves against values that are worked out in another way, and the records of samplers byte for byte.

#include "qdscenegraph/animation/CSGAnimSampler.h"
#include "qdcommon/CFileStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace
{

using CSamplerPtr = boost::intrusive_ptr<CSGAnimSampler>;
using CFloats = std::vector<float>;

// Tangents: all in-tangents, then all out-tangents.
CSamplerPtr Make(int32_t nType, const CFloats& rTimes, const CFloats& rValues, const CFloats& rTangents = {})
{
    const auto nKeys = static_cast<int32_t>(rTimes.size());
    const auto spSampler = CSGAnimSampler::Create(nKeys, static_cast<int32_t>(rValues.size()) / nKeys,
                                                  static_cast<CSGAnimSampler::EInterpType>(nType));
    const std::span arrTangents(rTangents);
    const size_t nHalf = rTangents.size() / 2;
    EXPECT_TRUE(spSampler->SetKeyData(rTimes, rValues, arrTangents.first(nHalf), arrTangents.last(nHalf)));
    return spSampler;
}

// Empty when the sampler fails.
CFloats Sample(const CSamplerPtr& spSampler, float fTime)
{
    CFloats vecValues(static_cast<size_t>(spSampler->GetOutputCount()));
    const bool bSampled = spSampler->SampleAtTime(fTime, vecValues.data(), spSampler->GetOutputCount());
    return bSampled ? vecValues : CFloats();
}

std::string Words(std::initializer_list<int32_t> arrInts, std::initializer_list<float> arrFloats = {})
{
    return std::string(reinterpret_cast<const char*>(arrInts.begin()), 4 * arrInts.size()) +
           std::string(reinterpret_cast<const char*>(arrFloats.begin()), 4 * arrFloats.size());
}

// The record that is written for one that is read; empty when that is refused.
std::string ReadAndWrite(int32_t nVersion, const std::string& rBytes)
{
    const CTempFile objFile("sampler", rBytes);
    CFileStream objInput(objFile.GetName(), CFileStream::OPEN_READ);
    CSGStreamableLoadState objState;
    objState.SetVersionBeingLoaded(CSGAnimSampler::GetStaticSGStreamableType(), nVersion);
    const CSamplerPtr spSampler = CSGMem::Construct<CSGAnimSampler>();
    const bool bRead = spSampler->ReadFromStream(&objInput, &objState);
    CFileStream objOutput(objFile.GetName(), CFileStream::OPEN_WRITE | CFileStream::OPEN_TRUNCATE);
    EXPECT_TRUE(!bRead || spSampler->WriteToStream(&objOutput, nullptr));
    objOutput.Close();
    return objFile.ReadBytes();
}

double Bernstein(double s, double p0, double p1, double p2, double p3)
{
    const double r = 1.0 - s;
    return r * r * r * p0 + 3 * s * r * r * p1 + 3 * s * s * r * p2 + s * s * s * p3;
}

} // namespace

TEST(CSGAnimSampler, HoldsItsEndsAndMeetsItsKeys)
{
    const struct
    {
        int32_t nType;
        float fTime;
        CFloats vecExpected;
    } arrCases[] = {{2, -INFINITY, {10, 100}}, {2, 1, {10, 100}},    {2, 2, {20, 300}}, {2, 3, {0, 350}},
                    {2, 4, {4, 400}},          {2, 6, {-8, 0}},      {2, NAN, {-8, 0}}, {1, 1.75f, {10, 100}},
                    {1, 2, {20, 300}},         {1, 5.99f, {4, 400}}, {1, 6, {-8, 0}}};
    for (const auto& rCase : arrCases)
    {
        const auto spSampler =
            Make(rCase.nType, {1, 2, 4, 4, 6}, {10, 100, 20, 300, -20, 400, 4, 400, -8, 0});
        EXPECT_EQ(Sample(spSampler, rCase.fTime), rCase.vecExpected) << rCase.nType << " " << rCase.fTime;
        EXPECT_EQ(Sample(Make(rCase.nType, {3}, {7, 8}), rCase.fTime), (CFloats{7, 8}));
    }
    // Keys in disorder: no value is promised, an end within the keys is.
    for (const int32_t nType : {1, 2, 3, 4})
    {
        const auto spSampler = Make(nType, {0, NAN, 9, -INFINITY, NAN, 3, INFINITY, 2}, CFloats(32, 1),
                                    CFloats(nType == 3 ? 128 : 0, NAN));
        for (float fTime = -1; fTime < 11; fTime += 0.25f)
        {
            EXPECT_EQ(Sample(spSampler, fTime).size(), 4u);
        }
    }
}

// A point of the curve at a parameter is what a sample at that point's time must give.
TEST(CSGAnimSampler, BezierPassesThroughThePointsOfItsCurve)
{
    std::mt19937 objRandom(1);
    std::uniform_real_distribution<float> objInside(0.1f, 0.9f);
    for (int nCurve = 0; nCurve < 200; ++nCurve)
    {
        CFloats v(4),
            t(16); // two outputs of A and B; the in-tangents of A and B, the out-tangents of A and B
        std::ranges::generate(v, [&] { return objInside(objRandom); });
        std::ranges::generate(t, [&] { return objInside(objRandom); });
        t[6] = nCurve & 1 ? t[4] : t[6]; // the two share the times of either end, or not
        t[10] = nCurve & 2 ? t[8] : t[10];
        for (size_t n = 0; n < 2; ++n)
        {
            const double s = objInside(objRandom);
            const auto fTime = static_cast<float>(Bernstein(s, 0, t[8 + 2 * n], t[4 + 2 * n], 1));
            const double fValue = Bernstein(s, v[n], t[9 + 2 * n], t[5 + 2 * n], v[2 + n]);
            EXPECT_NEAR(Sample(Make(3, {0, 1}, v, t), fTime)[n], fValue, 1e-5) << nCurve;
        }
    }
    const auto spThirds = Make(3, {1, 4}, {-3, 6}, {0, 0, 3, 3, 2, 0, 0, 0});
    for (float fTime = 1; fTime <= 4; fTime += 0.03125f)
    {
        EXPECT_NEAR(Sample(spThirds, fTime)[0], 3 * fTime - 6, 2e-6) << "the straight line";
    }
    // s = fTime: 3 s (1 - s)^2 times the one tangent that is not 0.
    const auto spSteep = Make(3, {0, 3}, {0, 0}, {0, 0, 2, 0, 1, 5e6f, 0, 0});
    EXPECT_NEAR(Sample(spSteep, 2.9990234375f)[0], 1.5889e0f, 1e-3);
}

// A turned towards B in the plane of A and a direction P at right angles to it.
TEST(CSGAnimSampler, QuaternionsTurnAtAnEvenPaceOnTheShorterArc)
{
    const double A[4] = {0.5, -0.1, 0.7, 0.5}, P[4] = {-0.1, -0.5, -0.5, 0.7}; // of unit length
    for (const double fAngle : {1.57, -1.57, -1.0, 1.0, 0.01, 1.5e-3, -1.3e-3, 1e-5, 0.0})
    {
        const auto At = [&](double fTurn, size_t n) {
            return static_cast<float>(A[n] * std::cos(fTurn) + P[n] * std::sin(fTurn));
        };
        CFloats vecKeys(8);
        for (size_t n = 0; n < 4; ++n)
        {
            vecKeys[n] = At(0, n);
            vecKeys[4 + n] = At(fAngle, n) * (fAngle < 0 ? -1.0f : 1.0f);
        }
        for (float u = 0; u < 1; u += 0.0078125f)
        {
            const CFloats vecValues = Sample(Make(4, {2, 4}, vecKeys), 2 + 2 * u);
            for (size_t n = 0; n < 4; ++n)
            {
                EXPECT_NEAR(vecValues[n], At(u * fAngle, n), 5e-7) << fAngle << " " << u;
            }
        }
    }
}

TEST(CSGAnimSampler, SaysWhatIsWrong)
{
    const auto spThree = Make(4, {0, 1}, {1, 2, 3, 4, 5, 6});
    const auto spEmpty = CSGAnimSampler::Create(0, 1, CSGAnimSampler::INTERP_LINEAR);
    CLogCapture objLog;
    float arrValues[4] = {};
    const auto Expect = [&](bool bResult, const std::string& rFirstLine) {
        EXPECT_FALSE(bResult) << rFirstLine;
        EXPECT_EQ(objLog.GetLines().empty() ? "" : objLog.GetLines()[0], "1 " + rFirstLine);
        objLog.Clear();
    };
    Expect(spThree->SampleAtTime(0, arrValues, 4), "nOutputValueCount == m_nOutputCount is false");
    Expect(spEmpty->SampleAtTime(0, arrValues, 1), "m_arrfKeyData is NULL");
    Expect(spEmpty->GetEndTime() != 0, "pfLastKey is NULL");
    Expect(spThree->Interpolate(5, spThree->FindLatestKeyBeforeTime(5), arrValues),
           "pfPrevKey < pfLastKey is false");
    Expect(spThree->SampleAtTime(0.5f, arrValues, 3),
           "Tried to use Quaternion SLERP to interpolate a sampler that doesn't have 4 output values.");
    Expect(Make(9, {0, 1}, {5, 6})->SampleAtTime(0.5f, arrValues, 1), "Unknown interpolation type 9");
    Expect(spThree->SetKeyValue(2, 0, 0), "pfKey is NULL");
    Expect(spThree->SetKeyValue(1, 3, 0), "nOutput < m_nOutputCount is false");
    Expect(spThree->SetKeyOutTangentTime(1, 2, 0),
           "ePart == PART_VALUE || m_eInterpType == INTERP_BEZIER is false");

    Make(3, {7}, {1, 2}, {3, 4, 5, 6, 13, 14, 15, 16})->OutputDebugInfo("");
    EXPECT_TRUE(
        objLog.HasLine("7      1 value=2.000 in_tangent=[5.000, 6.000] out_tangent=[15.000, 16.000]"));
}

TEST(CSGAnimSampler, RecordsAreTheDocumentedOnes)
{
    constexpr int32_t MANY = 0x7FFFFFFF;
    const std::string strBezier = Words({1, 2, 3}, {7, 1, 2, 3, 4, 5, 6, 13, 14, 15, 16});
    const std::string strUnknown = Words({2, 1, -7}, {0, 1, 2, 3});
    const struct
    {
        int32_t nVersion;
        std::string strRead;
        std::string strWritten; // empty when it is refused
        const char* szReason = "";
    } arrCases[] = {
        {2, strBezier, strBezier},
        {2, strUnknown, strUnknown},
        {2, Words({0, 3, 2}), Words({0, 3, 2})},
        {1, Words({2, 2}, {0, 8}) + Words({3}, {2, 9}), Words({2, 1, 2}, {0, 8, 2, 9})},
        {1, Words({1, 3}, {1, 2, 3, 4, 5, 6}), Words({1, 1, 3}, {1, 2, 3, 4, 5, 6})},
        {3, Words({1, 1, 2}, {0, 1}), "", "Unknown stream version 3"},
        {2, Words({MANY, 1, 2}, {0, 1}), "", "CanRead(nKeyCount, nKeyBytes)"},
        {2, Words({0x40000000, 3, 2}, {0, 1, 2, 3}), "", "CanRead(nKeyCount, nKeyBytes)"},
        {2, Words({-1, 1, 2}, {0, 1}), "", "CanRead(nKeyCount, nKeyBytes)"},
        {2, Words({2, 1, 3}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}), "", "CanRead(nKeyCount, nKeyBytes)"},
        {2, Words({1, -1, 2}, {0, 1}), "", "nOutputCount >= 0"},
        {2, Words({0, MANY, 3}), "", "nKeyStride <= "},
        {1, Words({0}), "", "m_nKeyCount > 0 is false"},
        {1, Words({MANY, 2}, {0, 1}), "", "TYPE_BYTES + nKeyBytes"},
        {1, Words({2, 2}, {0, 1}) + Words({2}, {1}), "", "TYPE_BYTES + nKeyBytes"},
    };
    for (const auto& rCase : arrCases)
    {
        CLogCapture objLog;
        EXPECT_EQ(ReadAndWrite(rCase.nVersion, rCase.strRead), rCase.strWritten) << rCase.szReason;
        EXPECT_TRUE(*rCase.szReason != '\0' ? objLog.Contains(rCase.szReason) : objLog.GetLines().empty())
            << rCase.szReason << testing::PrintToString(objLog.GetLines());
    }
}
