#include "qdsgloader_collada/CColladaGeometrySet.h"

#include "qdcommon/CLog.h"
#include "qdscenegraph/geometry/CSGData_GeomBounds.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CColladaBindMaterial.h"
#include "qdsgloader_collada/CColladaInstance.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>
#include <numeric>
#include <set>

bool CColladaGeometrySet::AddGeometry(const CGeometryPtr& spGeometry)
{
    if (!spGeometry)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in NULL geometry.");
        return false;
    }
    m_mapPiecesOfSymbol[spGeometry->GetMaterialSymbol()].push_back(GetNumGeometries());
    m_vecGeometries.push_back(spGeometry);
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

const CQDString& CColladaGeometrySet::GetSymbol(int32_t nPiece) const
{
    return m_vecGeometries[static_cast<size_t>(nPiece)]->GetMaterialSymbol();
}

boost::intrusive_ptr<CSGData_Geometry> CColladaGeometrySet::GetData(const CPieces& rvecPieces)
{
    boost::intrusive_ptr<CSGData_Geometry>& rspData = m_mapData[rvecPieces];
    if (rspData)
    {
        return rspData;
    }
    const boost::intrusive_ptr<CSGGeomList> spGeomList = CSGGeomList::Create();
    for (const int32_t nPiece : rvecPieces)
    {
        if (!spGeomList ||
            !spGeomList->AddBinding(m_vecGeometries[static_cast<size_t>(nPiece)]->GetBinding()))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add binding object from index %d to geom list.", nPiece);
            return nullptr;
        }
    }
    rspData = CSGData_Geometry::Create(spGeomList);
    return rspData;
}

bool CColladaGeometrySet::AddToNode(CSGNode& rNode, const CPieces& rvecPieces)
{
    const boost::intrusive_ptr<CSGData_Geometry> spData = GetData(rvecPieces);
    return spData && rNode.AddData(spData.get()) && CSGData_GeomBounds::GetOrCreateFromNode(&rNode);
}

bool CColladaGeometrySet::BindToAllMaterials(CSGNode& rNode)
{
    CPieces vecAll(m_vecGeometries.size());
    std::iota(vecAll.begin(), vecAll.end(), 0);
    if (!AddToNode(rNode, vecAll))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to add geom list to new node.");
        return false;
    }
    return true;
}

std::vector<CColladaGeometrySet::CGroup> CColladaGeometrySet::GroupByMaterial(
    const CColladaBindMaterial& rBindMaterial) const
{
    std::vector<CGroup> vecGroups;
    std::set<CQDString> setSymbols;
    for (int32_t n = 0; n < rBindMaterial.GetNumMaterials(); ++n)
    {
        const CColladaInstanceMaterial* pMaterial = rBindMaterial.GetMaterial(n);
        const auto itPieces = m_mapPiecesOfSymbol.find(pMaterial->GetMaterialSymbol());
        if (itPieces != m_mapPiecesOfSymbol.end() && setSymbols.insert(itPieces->first).second)
        {
            vecGroups.push_back({itPieces->second, pMaterial});
        }
    }
    CPieces vecUnbound;
    for (const auto& [strSymbol, vecPieces] : m_mapPiecesOfSymbol)
    {
        if (!setSymbols.contains(strSymbol))
        {
            vecUnbound.insert(vecUnbound.end(), vecPieces.begin(), vecPieces.end());
        }
    }
    if (!vecUnbound.empty())
    {
        std::ranges::sort(vecUnbound);
        vecGroups.push_back({std::move(vecUnbound), nullptr});
    }
    return vecGroups;
}

bool CColladaGeometrySet::BindToMaterials(CSGNode& rNode, const CColladaBindMaterial& rBindMaterial,
                                          size_t& rnNumUnbound)
{
    const std::vector<CGroup> vecGroups = GroupByMaterial(rBindMaterial);
    if (vecGroups.empty())
    {
        return true; // no pieces
    }
    const CColladaInstanceMaterial* pFirst = vecGroups.front().pMaterial;
    if (vecGroups.back().pMaterial == nullptr)
    {
        rnNumUnbound += static_cast<size_t>(std::ranges::count_if(
            vecGroups.back().vecPieces, [&](int32_t nPiece) { return !GetSymbol(nPiece).empty(); }));
    }
    const bool bOneForAll =
        vecGroups.size() == 1 || std::ranges::all_of(vecGroups, [&](const CGroup& rGroup) {
            return rGroup.pMaterial != nullptr && pFirst->GetMaterialData() &&
                   rGroup.pMaterial->GetMaterialData() == pFirst->GetMaterialData();
        });
    if (!bOneForAll)
    {
        return std::ranges::all_of(vecGroups, [&](const CGroup& rGroup) { return AddChild(rNode, rGroup); });
    }
    return BindToAllMaterials(rNode) && (pFirst == nullptr || AddMaterial(rNode, *pFirst));
}

bool CColladaGeometrySet::AddMaterial(CSGNode& rNode, const CColladaInstanceMaterial& rMaterial)
{
    const char* szSymbol = rMaterial.GetMaterialSymbol().c_str();
    if (!rMaterial.GetMaterialData())
    {
        // The fault is the material's; its geometry can still be looked at.
        Log(QD_COLLADA, LOG_ERROR, "Had NULL material data for material \"%s\".", szSymbol);
        return true;
    }
    if (!rNode.AddData(rMaterial.GetMaterialData().get()))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to add material data to new node for material \"%s\".", szSymbol);
        return false;
    }
    return true;
}

bool CColladaGeometrySet::AddChild(CSGNode& rNode, const CGroup& rGroup)
{
    const CQDString& rSymbol = GetSymbol(rGroup.vecPieces.front());
    const CQDString strUnbound = rSymbol.empty() ? "unbound" : rSymbol;
    const boost::intrusive_ptr<CSGNode> spChild = CSGNode::Create(
        CColladaInstance::JoinNames(
            rNode.GetGlobalName(),
            (rGroup.pMaterial != nullptr ? rGroup.pMaterial->GetGlobalName() : strUnbound).c_str()),
        CColladaInstance::JoinNames(
            rNode.GetLocalName(),
            (rGroup.pMaterial != nullptr ? rGroup.pMaterial->GetLocalName() : strUnbound).c_str()));
    if (!spChild)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create a new node for material \"%s\".", rSymbol);
        return false;
    }
    if (!AddToNode(*spChild, rGroup.vecPieces))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to add geom list to new node for material \"%s\".", rSymbol);
        return false;
    }
    if (rGroup.pMaterial != nullptr && !AddMaterial(*spChild, *rGroup.pMaterial))
    {
        return false;
    }
    if (!rNode.AddChild(spChild.get()))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create node from list of nodes.");
        return false;
    }
    return true;
}
