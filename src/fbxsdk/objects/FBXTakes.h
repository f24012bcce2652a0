// The takes of files before version 7, as the animation stacks of version 7.
#pragma once

#include "fbxsdk/objects/FBXModelParts.h"

// All objects are in the table, with their names. Channels without any keys make a
// curve node when they say something else than the property, and no curve.
void ReadFBXTakes(CFBXObjectTable& rTable, const FBXModelPartsMap& rParts);
