#include "qdscenegraph/animation/CSGAnimTimeSource.h"

#include <new>

CSGAnimTimeSourcePtr CSGAnimTimeSource::Create() { return new (std::nothrow) CSGAnimTimeSource; }

void CSGAnimTimeSource::Advance(double fElapsedSeconds)
{
    if (!m_bPaused)
    {
        m_fTime += fElapsedSeconds * m_fRate;
    }
}
