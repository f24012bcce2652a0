// The COLLADA loader as a library: its initialisation and its log source.
#pragma once

#include "qdcommon/CLogSource.h"

// What the loader has to say of documents. Its reader below has a source of its own.
extern CLogSource QD_COLLADA;

class CQDSGLoaderColladaLib
{
  public:
    // Registers the kinds of data sources and becomes the DOM's error handler, until the process ends. To be
    // called once, before the first loader is made. Always true: what could not be registered is in the log.
    static bool InitLibrary();
};
