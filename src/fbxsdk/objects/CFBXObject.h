// An object of an FBX file, in the shape that files of version 7 give it.
#pragma once

#include "fbxsdk/objects/CFBXProperties.h"

#include <cstdint>
#include <string_view>

class CFBXRecord;

// Lives in its CFBXObjectTable; texts are borrowed from there.
struct CFBXObject
{
    int64_t nId = 0;           // 0: the root of the scene; negative ones are valid
    std::string_view strClass; // "Model", "Geometry", "NodeAttribute", "Material", "Texture", "Deformer", ...
    std::string_view strKind;  // "Mesh", "LimbNode", "Camera", "Skin", "Cluster", ...; often empty
    std::string_view strName;  // without the class
    // What the file says of it. Null for what an older file does not write as a record of its own. Older
    // files describe a mesh inside of its model: then the geometry's record is the model's.
    const CFBXRecord* pRecord = nullptr;
    CFBXProperties objProperties;
};
