// The keys of one animation curve as a sampler needs them: in seconds, with nothing before, between and
// behind them left to be worked out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_set>
#include <vector>

class FbxAnimCurve;

// What lies between a key and the next.
enum class EFBXPiece : uint8_t
{
    Hold, // the value behind the key
    Linear,
    Cubic
};

struct CFBXCurveKey
{
    double m_fTime = 0;
    // Where a curve jumps, the values just before, at and just behind the key differ.
    double m_fBefore = 0;
    double m_fValue = 0;
    double m_fBehind = 0;
    // Bezier control points; those of a straight piece lie at its thirds.
    double m_fInTime = 0, m_fInValue = 0;
    double m_fOutTime = 0, m_fOutValue = 0;
    EFBXPiece m_ePiece = EFBXPiece::Hold; // the one behind the key
};

// What keys are made for.
struct CFBXKeyRange
{
    double m_fBegin = 0, m_fEnd = 0; // seconds
    double m_fFramesPerSecond = 0;   // one key a frame; 0: the keys of the curve

    // More are never sampled: two hours.
    static constexpr double MAX_FRAMES = 216000;

    // The frames, from the first at the beginning to the end, which is one whether a frame begins there or
    // not. As a double: there may be more than any integer holds.
    double CountFrames() const;
    double GetFrameTime(size_t nFrame) const;
};

// How many numbers may be made that the file does not have, as keys of all its animations together: a few
// bytes can ask for any number of them. What the file does have raises it.
class CFBXKeyBudget
{
  public:
    // False when so many are not left; then nothing is taken.
    bool Take(double fNumbers);
    // For the keys of a curve. Those that the file has are free; a curve that drives more than one thing
    // takes as much for each further one.
    bool TakeKeysOf(const FbxAnimCurve& rCurve);

  private:
    static constexpr double START = 16e6;
    static constexpr double NUMBERS_PER_KEY = 16;

    double m_fLeft = START;
    std::unordered_set<const FbxAnimCurve*> m_setCurves;
};

class CFBXCurveKeys
{
  public:
    // One value at all times.
    explicit CFBXCurveKeys(double fValue = 0) : m_fConstant(fValue) {}
    // Of a curve. How it goes on outside of its keys becomes keys, too, as far as the range goes. A curve
    // that is sampled has the frames of the range as keys, with straight pieces between them. Where the
    // budget is too small for either, the curve's own keys are all.
    CFBXCurveKeys(const FbxAnimCurve& rCurve, const CFBXKeyRange& rRange, CFBXKeyBudget& rBudget);

    // The value is the same at all times; then there are no keys.
    bool IsConstant() const { return m_vecKeys.empty(); }
    double GetConstant() const { return m_fConstant; }
    std::span<const CFBXCurveKey> GetKeys() const { return m_vecKeys; }
    // Whether both have keys at the same times.
    bool SharesTimes(const CFBXCurveKeys& rOther) const;
    // Whether the budget was too small.
    bool IsCut() const { return m_bCut; }

  private:
    void AddCurve(const FbxAnimCurve& rCurve);
    void AddFrames(const FbxAnimCurve& rCurve, const CFBXKeyRange& rRange);
    void AddExtrapolations(const FbxAnimCurve& rCurve, const CFBXKeyRange& rRange, CFBXKeyBudget& rBudget);
    void MakeConstantIfSame();

    std::vector<CFBXCurveKey> m_vecKeys;
    double m_fConstant = 0;
    bool m_bCut = false;
};
