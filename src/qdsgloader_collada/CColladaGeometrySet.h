// The geometry made of one COLLADA geometry: one piece per primitive element.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdsgloader_collada/CColladaGeometry.h"

#include <vector>

class CSGNode;

class CColladaGeometrySet : public CRefObject
{
  public:
    using CGeometryPtr = boost::intrusive_ptr<CColladaGeometry>;

    // False (reported) for null.
    bool AddGeometry(const CGeometryPtr& spGeometry);
    int32_t GetNumGeometries() const { return static_cast<int32_t>(m_vecGeometries.size()); }
    // Null (reported) for an index outside the set.
    CColladaGeometry* GetGeometry(int32_t nIndex) const;

    // A new node with all pieces, whatever their materials; null (reported) on failure.
    boost::intrusive_ptr<CSGNode> BindToAllMaterials(const CQDCompactString& rGlobalName,
                                                     const CQDCompactString& rLocalName);
    // Gives the node all pieces and their bounds. Every node that shows the set shares one geometry. False
    // (reported) on failure.
    bool AddToNode(CSGNode* pNode);

  private:
    boost::intrusive_ptr<CSGGeomList> CreateGeomList() const;

    std::vector<CGeometryPtr> m_vecGeometries;
    boost::intrusive_ptr<CSGData_Geometry> m_spData; // made on first use
};
