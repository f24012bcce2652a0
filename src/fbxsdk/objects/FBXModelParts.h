// Models of files before version 7 hold their geometry, camera, light or joint; this makes objects of those.
#pragma once

#include "fbxsdk/objects/CFBXObjectTable.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>

// "Deformer" objects of the kind "BlendShapeChannel" by the names of their shapes.
using FBXShapeChannels = std::unordered_map<std::string_view, const CFBXObject*>;

// What a model was split into. The objects live in the table.
struct SFBXModelParts
{
    const CFBXObject* pAttribute = nullptr; // its "Geometry" or "NodeAttribute"; may be null
    FBXShapeChannels mapShapeChannels;
};

using FBXModelPartsMap = std::unordered_map<int64_t, SFBXModelParts>; // by the model's id

// Properties that belong to the attribute go there from the model; the attribute's record is the model's. All
// parts are added to the table and connected to each other and to the model.
SFBXModelParts SplitFBXModel(CFBXObject& rModel, CFBXObjectTable& rTable);

// Geometry of files before 7.2 holds its shapes; makes blend shapes of them, connected to it.
FBXShapeChannels AddFBXShapes(const CFBXObject& rGeometry, CFBXObjectTable& rTable);
