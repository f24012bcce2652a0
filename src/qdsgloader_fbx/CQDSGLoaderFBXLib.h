// The FBX loader as a library: its initialisation and its log source.
#pragma once

#include "qdcommon/CLogSource.h"

extern CLogSource QD_FBX;

class CQDSGLoaderFBXLib
{
  public:
    // To be called once before the first loader is made. There is nothing to prepare: always true.
    static bool InitLibrary();
};
