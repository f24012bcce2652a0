// Tells whether something has changed since it was looked at.
#pragma once

#include <cstdint>

// Every edit of any geometry takes the next number of one counter. What is derived from several objects is
// out of date when the newest of their stamps is no longer the one it was made at.
class CSGEditStamp
{
  public:
    CSGEditStamp() { Renew(); }

    void Renew() { m_uiStamp = ++ms_uiLast; }
    // The newest stamp of all.
    static uint64_t GetLast() { return ms_uiLast; }
    // Above 0, and of no other object.
    uint64_t Get() const { return m_uiStamp; }

  private:
    static inline uint64_t ms_uiLast = 0;

    uint64_t m_uiStamp;
};
