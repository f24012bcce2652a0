// The log source of reading XML and animations documents.
#pragma once

#include "qdcommon/CLogSource.h"

inline CLogSource ANIM_XML("ANIM_XML");
