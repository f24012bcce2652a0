#include "fbxsdk/geometry/FbxCluster.h"

#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "fbxsdk/scene/FbxNode.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <cmath>

namespace
{

FbxCluster::ELinkMode GetMode(std::string_view strMode)
{
    if (strMode == "Additive")
    {
        return FbxCluster::eAdditive;
    }
    return strMode == "Total1" ? FbxCluster::eTotalOne : FbxCluster::eNormalize;
}

} // namespace

std::unique_ptr<FbxCluster> FbxCluster::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::unique_ptr<FbxCluster> spCluster(new FbxCluster(rObject));
    if (const CFBXRecord* pRecord = rObject.pRecord)
    {
        spCluster->m_eLinkMode = GetMode(pRecord->GetChildString("Mode"));
        spCluster->ReadWeights(*pRecord);
        spCluster->m_objTransform = spCluster->ReadMatrix(*pRecord, "Transform");
        spCluster->m_objTransformLink = spCluster->ReadMatrix(*pRecord, "TransformLink");
    }
    return spCluster;
}

void FbxCluster::ReadWeights(const CFBXRecord& rRecord)
{
    // Exporters write bones that move nothing without either.
    const CFBXRecord* pIndices = rRecord.FindChild("Indexes");
    const CFBXRecord* pWeights = rRecord.FindChild("Weights");
    if (pIndices == nullptr || pWeights == nullptr || !pIndices->ReadInts(m_vecIndices) ||
        !pWeights->ReadDoubles(m_vecWeights))
    {
        m_vecIndices.clear();
        m_vecWeights.clear();
        return;
    }
    if (m_vecIndices.size() != m_vecWeights.size())
    {
        Log(FBXSDK, LOG_WARNING, "Cluster '%s' has %d indices and %d weights: the rest of them is left out",
            GetName(), static_cast<int>(m_vecIndices.size()), static_cast<int>(m_vecWeights.size()));
        const size_t nCount = std::min(m_vecIndices.size(), m_vecWeights.size());
        m_vecIndices.resize(nCount);
        m_vecWeights.resize(nCount);
    }
    if (!std::ranges::all_of(m_vecWeights, [](double d) { return std::isfinite(d); }))
    {
        Log(FBXSDK, LOG_WARNING, "Cluster '%s' has weights that are no numbers: they count as 0", GetName());
        std::ranges::replace_if(
            m_vecWeights, [](double d) { return !std::isfinite(d); }, 0.0);
    }
}

std::optional<FbxAMatrix> FbxCluster::ReadMatrix(const CFBXRecord& rRecord, const char* szName) const
{
    const CFBXRecord* pRecord = rRecord.FindChild(szName);
    const auto objMatrix = pRecord != nullptr ? FbxAMatrix::FromRecord(*pRecord) : std::nullopt;
    if (pRecord != nullptr && !objMatrix)
    {
        Log(FBXSDK, LOG_WARNING, "The %s of cluster '%s' is not a matrix of 16 numbers: it is left out",
            szName, GetName());
    }
    return objMatrix;
}

void FbxCluster::OnConnected()
{
    const std::vector<FbxNode*> vecNodes = GetSrcObjects<FbxNode>();
    m_pLink = vecNodes.empty() ? nullptr : vecNodes.front();
}
