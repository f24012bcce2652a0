// Reads a NEST file into a new resource set.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"
#include "qdscenegraph/resource/CSGResourceSet.h"

class CSGNestReader : public CRefObject
{
  public:
    static boost::intrusive_ptr<CSGNestReader> Create();

    // Reads one file in one forward pass. On failure (reported) the resource set holds whatever was built
    // before it.
    bool LoadFile(const CQDString& rFilename);

    // The loaded set; null before the header of a file was read.
    boost::intrusive_ptr<CSGResourceSet> m_spResourceSet;
};
