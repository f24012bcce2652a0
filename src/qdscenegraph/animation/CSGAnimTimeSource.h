// A clock for animations.
#pragma once

#include "qdcommon/CRefObject.h"

// Seconds since the animations that follow it began. Several may follow one clock, and so keep in step. It
// moves when it is told to.
class CSGAnimTimeSource final : public CRefObject
{
  public:
    // At 0, with the rate 1.
    static boost::intrusive_ptr<CSGAnimTimeSource> Create();

    double GetTime() const { return m_fTime; }
    void SetTime(double fSeconds) { m_fTime = fSeconds; }
    // How fast the clock runs: 0.5 is half as fast, -1 backwards.
    double GetRate() const { return m_fRate; }
    void SetRate(double fRate) { m_fRate = fRate; }
    bool IsPaused() const { return m_bPaused; }
    void SetPaused(bool bPaused) { m_bPaused = bPaused; }

    // So many seconds have gone by. A paused clock stands.
    void Advance(double fElapsedSeconds);

  private:
    // A float would lose a 60th of a second within a day.
    double m_fTime = 0.0;
    double m_fRate = 1.0;
    bool m_bPaused = false;
};

using CSGAnimTimeSourcePtr = boost::intrusive_ptr<CSGAnimTimeSource>;
