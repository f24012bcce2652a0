#include "qdsgloader_collada/CColladaGeometrySet.h"

#include "qdcommon/CLog.h"
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

bool CColladaGeometrySet::AddGeometry(const CGeometryPtr& spGeometry)
{
    if (!spGeometry)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in NULL geometry.");
        return false;
    }
    m_vecGeometries.push_back(spGeometry);
    m_spData.reset();
    return true;
}

CColladaGeometry* CColladaGeometrySet::GetGeometry(int32_t nIndex) const
{
    if (nIndex < 0 || nIndex >= GetNumGeometries())
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid index %d", nIndex);
        return nullptr;
    }
    return m_vecGeometries[static_cast<size_t>(nIndex)].get();
}

boost::intrusive_ptr<CSGGeomList> CColladaGeometrySet::CreateGeomList() const
{
    boost::intrusive_ptr<CSGGeomList> spGeomList = CSGGeomList::Create();
    for (size_t n = 0; spGeomList && n < m_vecGeometries.size(); ++n)
    {
        if (!spGeomList->AddBinding(m_vecGeometries[n]->GetBinding()))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add binding object from index %d to geom list.",
                static_cast<int>(n));
            return nullptr;
        }
    }
    return spGeomList;
}

bool CColladaGeometrySet::AddToNode(CSGNode* pNode)
{
    if (!m_spData)
    {
        const boost::intrusive_ptr<CSGGeomList> spGeomList = CreateGeomList();
        if (!spGeomList)
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to create a geom list for all materials.");
            return false;
        }
        m_spData = CSGData_Geometry::Create(spGeomList);
    }
    if (!m_spData || !pNode->AddData(m_spData.get()) || !CSGData_GeomBounds::GetOrCreateFromNode(pNode))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to add geom list to new node.");
        return false;
    }
    return true;
}

boost::intrusive_ptr<CSGNode> CColladaGeometrySet::BindToAllMaterials(const CQDCompactString& rGlobalName,
                                                                      const CQDCompactString& rLocalName)
{
    boost::intrusive_ptr<CSGNode> spNode = CSGNode::Create(rGlobalName, rLocalName);
    if (!spNode)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create a new node.");
        return nullptr;
    }
    return AddToNode(spNode.get()) ? spNode : nullptr;
}
