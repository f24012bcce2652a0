#include "fbxsdk/import/CFBXSceneBuilder.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/import/CFBXObjectFactory.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "fbxsdk/scene/FbxGlobalSettings.h"
#include "fbxsdk/scene/FbxScene.h"
#include "qdcommon/CLog.h"

CFBXSceneBuilder::CFBXSceneBuilder(FbxScene& rScene, std::unique_ptr<CFBXObjectTable> spTable)
    : m_rScene(rScene)
{
    m_rScene.Reset(std::move(spTable));
}

void CFBXSceneBuilder::Build()
{
    m_rScene.m_mapObjects.reserve(m_rScene.m_spTable->GetObjects().size());
    for (const CFBXObject& rObject : m_rScene.m_spTable->GetObjects())
    {
        if (std::unique_ptr<FbxObject> spObject = CFBXObjectFactory::Create(*m_rScene.m_spTable, rObject))
        {
            m_rScene.Take(std::move(spObject));
        }
    }
    Connect();
    BuildTree();
    for (const std::unique_ptr<FbxObject>& spObject : m_rScene.m_vecObjects)
    {
        spObject->OnConnected();
    }
    PlaceNodes();
}

void CFBXSceneBuilder::Connect()
{
    // First all links, then who has which: the vector must not move any more.
    struct CRange
    {
        size_t m_nSources;
        size_t m_nDestinations;
        size_t m_nEnd;
    };
    std::vector<CFBXLink>& rLinks = m_rScene.m_vecLinks;
    std::vector<CRange> vecRanges;
    vecRanges.reserve(m_rScene.m_vecObjects.size());
    const auto Add = [&](const CFBXConnection& rConnection, int64_t nOther) {
        FbxObject* pOther = m_rScene.FindObject(nOther);
        if (pOther != nullptr && !rConnection.IsFromProperty())
        {
            rLinks.push_back({pOther, rConnection.strDestinationProperty});
        }
    };
    for (const std::unique_ptr<FbxObject>& spObject : m_rScene.m_vecObjects)
    {
        CRange& rRange = vecRanges.emplace_back(CRange{rLinks.size(), rLinks.size(), rLinks.size()});
        if (spObject.get() == m_rScene.m_pGlobalSettings)
        {
            continue;
        }
        for (const CFBXConnection& rConnection : m_rScene.m_spTable->GetSources(spObject->GetUniqueID()))
        {
            Add(rConnection, rConnection.nSource);
        }
        rRange.m_nDestinations = rLinks.size();
        for (const CFBXConnection& rConnection : m_rScene.m_spTable->GetDestinations(spObject->GetUniqueID()))
        {
            Add(rConnection, rConnection.nDestination);
        }
        rRange.m_nEnd = rLinks.size();
    }
    const std::span<const CFBXLink> arrLinks(rLinks);
    for (size_t n = 0; n < vecRanges.size(); ++n)
    {
        const auto& [nSources, nDestinations, nEnd] = vecRanges[n];
        FbxObject& rObject = *m_rScene.m_vecObjects[n];
        rObject.m_arrSources = arrLinks.subspan(nSources, nDestinations - nSources);
        rObject.m_arrDestinations = arrLinks.subspan(nDestinations, nEnd - nDestinations);
    }
}

void CFBXSceneBuilder::BuildTree()
{
    FbxNode& rRoot = *m_rScene.m_pRootNode;
    const std::vector<FbxNode*> vecNodes = m_rScene.GetObjects<FbxNode>();
    for (FbxNode* pNode : vecNodes)
    {
        const std::vector<FbxNode*> vecParents = pNode->GetDstObjects<FbxNode>("");
        pNode->m_pParent = pNode == &rRoot || vecParents.empty() ? nullptr : vecParents.front();
    }
    std::unordered_set<const FbxNode*> setPlaced;
    for (FbxNode* pNode : vecNodes)
    {
        for (FbxNode* pChild : pNode->GetSrcObjects<FbxNode>(""))
        {
            if (pChild->m_pParent == pNode && setPlaced.insert(pChild).second)
            {
                pNode->m_vecChildren.push_back(pChild);
            }
        }
    }
    AddReachable(rRoot, 0);
    for (FbxNode* pNode : vecNodes)
    {
        if (!m_setReached.contains(pNode))
        {
            FbxNode& rTop = FindTop(*pNode);
            if (rTop.m_pParent != nullptr)
            {
                Log(FBXSDK, LOG_WARNING, "Node '%s' is below itself; taking it as a child of the root",
                    rTop.GetName());
                MoveToRoot(rTop);
            }
            else
            {
                // Cameras of the tool's own views and the like.
                Log(FBXSDK, LOG_INFO, "Node '%s' is not connected to the scene; leaving it out",
                    rTop.GetName());
            }
            AddReachable(rTop, 1);
        }
    }
}

// Once for each node: to walk up from every one is too slow where they are nested deep.
void CFBXSceneBuilder::PlaceNodes()
{
    std::vector<FbxNode*> vecOpen = m_rScene.GetObjects<FbxNode>();
    std::erase_if(vecOpen, [](const FbxNode* pNode) { return pNode->m_pParent != nullptr; });
    while (!vecOpen.empty())
    {
        FbxNode& rNode = *vecOpen.back();
        vecOpen.pop_back();
        rNode.OnPlaced();
        vecOpen.insert(vecOpen.end(), rNode.m_vecChildren.begin(), rNode.m_vecChildren.end());
    }
}

FbxNode& CFBXSceneBuilder::FindTop(FbxNode& rNode)
{
    std::unordered_set<const FbxNode*> setSeen;
    FbxNode* pNode = &rNode;
    while (pNode->m_pParent != nullptr && setSeen.insert(pNode).second)
    {
        pNode = pNode->m_pParent;
    }
    return *pNode;
}

void CFBXSceneBuilder::MoveToRoot(FbxNode& rNode)
{
    if (rNode.m_pParent != nullptr)
    {
        std::erase(rNode.m_pParent->m_vecChildren, &rNode);
    }
    rNode.m_pParent = m_rScene.m_pRootNode;
    m_rScene.m_pRootNode->m_vecChildren.push_back(&rNode);
}

void CFBXSceneBuilder::AddReachable(FbxNode& rTop, int nTopDepth)
{
    std::vector<std::pair<FbxNode*, int>> vecOpen = {{&rTop, nTopDepth}};
    m_setReached.insert(&rTop);
    while (!vecOpen.empty())
    {
        const auto [pNode, nDepth] = vecOpen.back();
        vecOpen.pop_back();
        int nChildDepth = nDepth + 1;
        const std::vector<FbxNode*> vecChildren = pNode->m_vecChildren;
        if (nChildDepth > FbxNode::MAX_DEPTH && !vecChildren.empty())
        {
            Log(FBXSDK, LOG_WARNING,
                "Node '%s' is nested %d deep; taking those below as children of the root", pNode->GetName(),
                FbxNode::MAX_DEPTH);
            pNode->m_vecChildren.clear();
            nChildDepth = 1;
        }
        for (FbxNode* pChild : vecChildren)
        {
            m_setReached.insert(pChild);
            vecOpen.emplace_back(pChild, nChildDepth);
            if (nChildDepth == 1 && pChild->m_pParent != m_rScene.m_pRootNode)
            {
                MoveToRoot(*pChild);
            }
        }
    }
}
