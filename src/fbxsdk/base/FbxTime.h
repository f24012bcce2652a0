// Moments and spans of time.
#pragma once

#include <compare>
#include <cstdint>

// A count of ticks so small that frames of every usual rate begin at a whole one.
class FbxTime
{
  public:
    static constexpr int64_t TICKS_PER_SECOND = 46186158000;

    // The frame rates by their numbers in the files.
    enum EMode
    {
        eDefaultMode,
        eFrames120,
        eFrames100,
        eFrames60,
        eFrames50,
        eFrames48,
        eFrames30,
        eFrames30Drop,
        eNTSCDropFrame,
        eNTSCFullFrame,
        ePAL,
        eFrames24,
        eFrames1000,
        eFilmFullFrame,
        eCustom,
        eFrames96,
        eFrames72,
        eFrames59dot94,
        eFrames119dot88
    };

    constexpr FbxTime() = default;
    constexpr explicit FbxTime(int64_t nTicks) : m_nTicks(nTicks) {}
    // To the nearest tick, held within 64 bits; not a number is 0.
    static FbxTime FromSeconds(double dSeconds);

    constexpr int64_t Get() const { return m_nTicks; }
    constexpr double GetSecondDouble() const
    {
        return static_cast<double>(m_nTicks) / static_cast<double>(TICKS_PER_SECOND);
    }
    constexpr auto operator<=>(const FbxTime&) const = default;

    // Frames per second; those of 30 for modes without a rate of their own (default, custom, unknown).
    static double GetFrameRate(EMode eMode);

  private:
    int64_t m_nTicks = 0;
};

struct FbxTimeSpan
{
    FbxTime m_objStart;
    FbxTime m_objStop;

    bool IsEmpty() const { return m_objStop <= m_objStart; }
    bool operator==(const FbxTimeSpan&) const = default;
};
