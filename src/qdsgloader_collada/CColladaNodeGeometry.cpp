#include "qdsgloader_collada/CColladaNodeGeometry.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaBindMaterial.h"
#include "qdsgloader_collada/CColladaController.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaGeometrySet.h"
#include "qdsgloader_collada/CColladaInstance.h"
#include "qdsgloader_collada/CColladaSkeletons.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

template <class INSTANCE>
bool CColladaNodeGeometry::AddInstance(INSTANCE& rInstance, domGeometry* pGeometry)
{
    if (pGeometry == nullptr)
    {
        CColladaInstance::LogIgnored(rInstance, rInstance.getUrl());
        return true;
    }
    CColladaGeometrySet* pSet = m_rLoader.LoadGeometry(*pGeometry);
    if (pSet == nullptr)
    {
        return false;
    }
    if (pSet->GetNumGeometries() > 0)
    {
        m_vecInstances.push_back({pSet, pGeometry, rInstance.getBind_material()});
    }
    return true;
}

bool CColladaNodeGeometry::AddController(domInstance_controller& rInstance)
{
    auto* pElement = CSGLoaderCollada::GetURIElement<domController>(rInstance.getUrl());
    const CColladaController objController =
        pElement != nullptr ? m_rLoader.LoadController(*pElement) : CColladaController();
    const size_t nNumInstances = m_vecInstances.size();
    if (!AddInstance(rInstance, objController.m_pGeometry))
    {
        return false;
    }
    if (m_vecInstances.size() > nNumInstances)
    {
        m_vecInstances.back().pInstance = &rInstance;
        m_vecInstances.back().pSkins = objController.m_spSkins.get(); // the loader keeps them
    }
    return true;
}

bool CColladaNodeGeometry::AddToNode(const CInstance& rInstance, CSGNode& rSGNode)
{
    return AddGeometryToNode(rInstance, rSGNode) &&
           (rInstance.pSkins == nullptr ||
            m_rSkeletons.AddSkins(*rInstance.pSkins, *rInstance.pInstance, rSGNode));
}

bool CColladaNodeGeometry::AddGeometryToNode(const CInstance& rInstance, CSGNode& rSGNode)
{
    if (rInstance.pBindMaterial == nullptr)
    {
        return rInstance.pSet->BindToAllMaterials(rSGNode);
    }
    CColladaBindMaterial objBindMaterial;
    objBindMaterial.LoadBindMaterial(*rInstance.pBindMaterial, m_rLoader.GetMaterials());
    size_t nNumUnbound = 0;
    const bool bBound = rInstance.pSet->BindToMaterials(rSGNode, objBindMaterial, nNumUnbound);
    m_rIgnored.Add("material symbols of primitive elements that their <bind_material> does not bind.",
                   nNumUnbound);
    return bBound;
}

bool CColladaNodeGeometry::Load(domNode& rNode, CSGNode& rSGNode)
{
    m_vecInstances.clear();
    for (const auto& rspInstance : AsSpan(rNode.getInstance_controller_array()))
    {
        if (!AddController(*rspInstance))
        {
            return false;
        }
    }
    for (const auto& rspInstance : AsSpan(rNode.getInstance_geometry_array()))
    {
        if (!AddInstance(*rspInstance, CSGLoaderCollada::GetURIElement<domGeometry>(rspInstance->getUrl())))
        {
            return false;
        }
    }
    if (m_vecInstances.size() == 1)
    {
        return AddToNode(m_vecInstances.front(), rSGNode);
    }
    for (const CInstance& rInstance : m_vecInstances)
    {
        const daeString szID = rInstance.pGeometry->getId();
        const daeString szName = rInstance.pGeometry->getName();
        const boost::intrusive_ptr<CSGNode> spChild =
            CSGNode::Create(CColladaInstance::JoinNames(rSGNode.GetGlobalName(), FirstText({szID, szName})),
                            CColladaInstance::JoinNames(rSGNode.GetLocalName(), FirstText({szName, szID})));
        if (!spChild || !AddToNode(rInstance, *spChild) || !rSGNode.AddChild(spChild.get()))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add node for <geometry id=\"%s\"> as child of node %s",
                Text(szID), rSGNode.GetGlobalName());
            return false;
        }
    }
    return true;
}
