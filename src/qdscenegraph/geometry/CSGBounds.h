// What geometry takes up in space.
#pragma once

#include "qdscenegraph/geometry/CSGBoundingBox.h"
#include "qdscenegraph/geometry/CSGBoundingSphere.h"

// The smallest box of the vertices, and the sphere around the box's centre that reaches to the farthest
// vertex. Both are empty without a vertex.
struct CSGBounds
{
    CSGBoundingBox m_objBox;
    CSGBoundingSphere m_objSphere;

    bool operator==(const CSGBounds&) const = default;
};
