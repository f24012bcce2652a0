// What skinned geometry takes up in the current pose.
#pragma once

#include "qdcommon/CTransform3.h"
#include "qdscenegraph/geometry/CSGBounds.h"

#include <cstdint>
#include <vector>

class CSGData_SkinBindingSet;
class CSGGeomList;
class CSGNode;

// Keeps the bounds for as long as neither the pose nor the geometry changes.
class CSGSkinBounds
{
  public:
    // The bounds of the node's CSGData_Geometry in the node's own space, as the bindings of the set deform
    // it. Null when nothing is skinned, and when the node's world transform has no inverse.
    const CSGBounds* Get(CSGNode* pNode, const CSGData_SkinBindingSet& rSet);

  private:
    // From the space of the mesh to that of the node, one for each joint and one more.
    using CPalette = std::vector<CTransform3>;

    // What the bounds are made from.
    struct CSource
    {
        uint64_t m_uiGeometry = 0; // stamp of the node's geometry attachment
        uint64_t m_uiNewest = 0;   // the newest stamp below it
        std::vector<CPalette> m_vecPalettes;

        bool operator==(const CSource&) const = default;
    };

    static CSGBounds Compute(const CSGGeomList& rGeomList, const CSGData_SkinBindingSet& rSet,
                             const std::vector<CPalette>& rPalettes);

    CSource m_objMadeFrom;
    CSGBounds m_objBounds;
};
