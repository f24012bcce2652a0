// Writes a resource set to a NEST file.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"

class CSGResourceSet;

class CSGNestWriter : public CRefObject
{
  public:
    static boost::intrusive_ptr<CSGNestWriter> Create();

    // Writes the set and everything it reaches, in file version 2. Missing directories are made. A failed
    // save leaves a partial file behind.
    bool SaveResourceSet(const CQDString& rFilename, CSGResourceSet* pResourceSet);
};
