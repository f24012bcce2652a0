// The log source of reading FBX files, for all layers of the reader.
#pragma once

#include "qdcommon/CLogSource.h"

inline CLogSource FBXSDK("FBXSDK");
