#include "qdsgloader_collada/CColladaNodeGeometry.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaBindMaterial.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaGeometrySet.h"
#include "qdsgloader_collada/CColladaInstance.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

namespace
{

// Real chains are a skin on a morph or the other way round. A chain without end leads nowhere, and neither
// does a long one.
constexpr int MAX_CHAINED_CONTROLLERS = 16;

// The geometry at the start of a chain of skins and morphs; null (reported) when it leads nowhere.
domGeometry* FindSourceGeometry(domController& rController)
{
    domController* pController = &rController;
    for (int n = 0; n < MAX_CHAINED_CONTROLLERS; ++n)
    {
        domSkin* pSkin = pController->getSkin();
        domMorph* pMorph = pController->getMorph();
        if (pSkin == nullptr && pMorph == nullptr)
        {
            Log(QD_COLLADA, LOG_ERROR, "<controller id=\"%s\"> had neither a <skin> nor a <morph>",
                GetIDText(*pController));
            return nullptr;
        }
        const daeURI& rSource = pSkin != nullptr ? pSkin->getSource() : pMorph->getSource();
        daeElement* pElement = CSGLoaderCollada::FindURIElement(rSource, domGeometry::ID());
        if (pElement != nullptr && pElement->typeID() == domGeometry::ID())
        {
            return static_cast<domGeometry*>(pElement);
        }
        if (pElement == nullptr || pElement->typeID() != domController::ID())
        {
            Log(QD_COLLADA, LOG_ERROR, "Reference to unknown geometry in <%s id=\"%s\">",
                pSkin != nullptr ? "skin" : "morph", GetIDText(*pController));
            return nullptr;
        }
        pController = static_cast<domController*>(pElement);
    }
    Log(QD_COLLADA, LOG_ERROR, "<controller id=\"%s\"> leads to itself or over more than %d controllers",
        GetIDText(rController), MAX_CHAINED_CONTROLLERS);
    return nullptr;
}

} // namespace

template <class INSTANCE>
bool CColladaNodeGeometry::AddInstance(const INSTANCE& rInstance, domGeometry* pGeometry)
{
    if (pGeometry == nullptr)
    {
        CColladaInstance::LogIgnored(const_cast<INSTANCE&>(rInstance), rInstance.getUrl());
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

bool CColladaNodeGeometry::AddToNode(const CInstance& rInstance, CSGNode& rSGNode)
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
        auto* pController = CSGLoaderCollada::GetURIElement<domController>(rspInstance->getUrl());
        domGeometry* pGeometry = pController != nullptr ? FindSourceGeometry(*pController) : nullptr;
        if (!AddInstance(*rspInstance, pGeometry))
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
