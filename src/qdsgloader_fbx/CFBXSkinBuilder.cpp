#include "qdsgloader_fbx/CFBXSkinBuilder.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdsgloader_fbx/CFBXLocalTransform.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <cmath>

namespace
{

// Of one scene graph, besides those of the first piece of each mesh. Every piece of a skinned mesh on every
// node with it has its own list of joints: a mesh of many clusters could ask for more than any memory holds.
constexpr size_t MAX_JOINTS = 1 << 20;
constexpr size_t JOINTS_PER_BINDING = 16; // what a skin binding takes up besides its joints
// Clusters belong to one skin, and skins to one mesh. Where a file connects them to many, each mesh looks
// through all of them.
constexpr size_t MAX_WEIGHTS = 1 << 26;

constexpr double MAX_WEIGHT = 1e30;
// Weights of exporters add up to 1 about as well as this.
constexpr double WEIGHT_TOLERANCE = 1e-3;

bool IsPoint(int32_t nIndex, size_t nNumPoints)
{
    return nIndex >= 0 && static_cast<size_t>(nIndex) < nNumPoints;
}

// The weights of all points: those of point n begin at the n-th offset and end at the next.
struct CPointWeights
{
    std::vector<size_t> m_vecOffsets;
    std::vector<CSGSkinWeight> m_vecWeights;
    size_t m_nNumOutside = 0; // weights of points that are not there

    CPointWeights(const std::vector<const FbxCluster*>& rClusters, size_t nNumPoints)
        : m_vecOffsets(nNumPoints + 1)
    {
        for (const FbxCluster* pCluster : rClusters)
        {
            for (const int32_t nIndex : pCluster->GetControlPointIndices())
            {
                if (IsPoint(nIndex, nNumPoints))
                {
                    ++m_vecOffsets[static_cast<size_t>(nIndex)];
                }
                else
                {
                    ++m_nNumOutside;
                }
            }
        }
        size_t nEnd = 0;
        for (size_t& rOffset : m_vecOffsets)
        {
            nEnd += rOffset;
            rOffset = nEnd;
        }
        m_vecWeights.resize(nEnd);
        // From the back, so that each point's offset ends up at its begin and its clusters in order.
        for (size_t n = rClusters.size(); n-- > 0;)
        {
            const auto arrIndices = rClusters[n]->GetControlPointIndices();
            const auto arrWeights = rClusters[n]->GetControlPointWeights();
            for (size_t i = arrIndices.size(); i-- > 0;)
            {
                if (IsPoint(arrIndices[i], nNumPoints))
                {
                    const double dWeight = std::clamp(arrWeights[i], -MAX_WEIGHT, MAX_WEIGHT);
                    m_vecWeights[--m_vecOffsets[static_cast<size_t>(arrIndices[i])]] = {
                        static_cast<int32_t>(n), static_cast<float>(dWeight)};
                }
            }
        }
    }

    std::span<const CSGSkinWeight> Get(size_t nPoint) const
    {
        return std::span(m_vecWeights)
            .subspan(m_vecOffsets[nPoint], m_vecOffsets[nPoint + 1] - m_vecOffsets[nPoint]);
    }
};

// Leaves only the strongest when there are too many. Whether there were.
bool Limit(std::vector<CSGSkinWeight>& rvecRow)
{
    constexpr size_t MAX_JOINTS_PER_VERTEX = CSGSkinVertexWeights::MAX_JOINTS_PER_VERTEX;
    if (rvecRow.size() <= MAX_JOINTS_PER_VERTEX)
    {
        return false;
    }
    std::ranges::nth_element(rvecRow, rvecRow.begin() + MAX_JOINTS_PER_VERTEX, std::ranges::greater(),
                             [](const CSGSkinWeight& rWeight) { return std::abs(rWeight.m_fWeight); });
    rvecRow.resize(MAX_JOINTS_PER_VERTEX);
    return true;
}

// Adds to the weights of a point what they leave to the mesh's own node, which is joint nMeshJoint.
void AddRest(std::vector<CSGSkinWeight>& rvecRow, int32_t nMeshJoint)
{
    double dRest = 1.0;
    for (const CSGSkinWeight& rWeight : rvecRow)
    {
        dRest -= rWeight.m_fWeight;
    }
    if (std::abs(dRest) > WEIGHT_TOLERANCE)
    {
        rvecRow.push_back({nMeshJoint, static_cast<float>(dRest)});
    }
}

} // namespace

bool CFBXSkinBuilder::AddSkin(CSGNode& rSGNode, const FbxNode& rFBXNode, const FbxMesh& rMesh,
                              const CFBXGeometryBuilder::CPiece& rPiece)
{
    CMeshSkin& rMeshSkin = GetMeshSkin(rFBXNode, rMesh);
    if (!rMeshSkin.m_spWeights || !rPiece.m_spBinding)
    {
        return true;
    }
    const bool bRepeated = !rMeshSkin.m_mapPieces.empty();
    m_nNumJoints += bRepeated ? rMeshSkin.m_vecClusters.size() + JOINTS_PER_BINDING : 0;
    if (bRepeated && m_nNumJoints > MAX_JOINTS)
    {
        Log(QD_FBX, LOG_ERROR, "The skins of nodes have %d joints more than the file: node '%s' goes without",
            static_cast<int>(MAX_JOINTS), rFBXNode.GetName());
        return true;
    }
    if ((m_pFBXNode != &rFBXNode || m_pMesh != &rMesh) && !LoadJoints(rFBXNode, rMesh, rMeshSkin))
    {
        return false;
    }
    boost::intrusive_ptr<CSGSkinVertexWeights>& rspWeights = rMeshSkin.m_mapPieces[&rPiece];
    if (!rspWeights)
    {
        rspWeights = rMeshSkin.m_spWeights->CreateSelection(rPiece.m_vecControlPoints);
    }
    QD_CHECK_CREATED(rspWeights, false);
    std::vector<CSGSkin::CJointPtr> vecJoints;
    for (const CJoint& rJoint : m_vecJoints)
    {
        vecJoints.push_back(rJoint.m_spJoint);
    }
    if (rspWeights->GetMaxJoint() + 1 < static_cast<int32_t>(vecJoints.size()))
    {
        vecJoints.pop_back();
    }
    const auto spSkin = CSGSkin::Create(CFBXLocalTransform::ToTransform3(rFBXNode.GetGeometricTransform()),
                                        vecJoints, rspWeights);
    QD_CHECK_CREATED(spSkin, false);
    const auto spBinding = CSGSkinBinding::Create(spSkin, rPiece.m_spBinding);
    QD_CHECK_CREATED(spBinding, false);
    for (int32_t n = 0; n < spBinding->GetNumJoints(); ++n)
    {
        spBinding->SetJointNode(n, m_vecJoints[static_cast<size_t>(n)].m_pNode);
    }
    const auto spBindingSet = CSGData_SkinBindingSet::Create();
    QD_CHECK_CREATED(spBindingSet, false);
    return spBindingSet->AddBinding(spBinding) && rSGNode.AddData(spBindingSet.get());
}

CFBXSkinBuilder::CMeshSkin& CFBXSkinBuilder::GetMeshSkin(const FbxNode& rFBXNode, const FbxMesh& rMesh)
{
    const auto [it, bNew] = m_mapSkins.try_emplace(&rMesh);
    CMeshSkin& rSkin = it->second;
    if (!bNew)
    {
        return rSkin;
    }
    rSkin.m_vecClusters = FindClusters(rFBXNode, rMesh);
    if (rSkin.m_vecClusters.size() >= CSGSkinVertexWeights::MAX_JOINTS)
    {
        Log(QD_FBX, LOG_ERROR, "Ignoring the skin of node '%s': it has %d clusters", rFBXNode.GetName(),
            static_cast<int>(rSkin.m_vecClusters.size()));
    }
    else if (!rSkin.m_vecClusters.empty())
    {
        rSkin.m_spWeights =
            LoadWeights(rFBXNode, rSkin.m_vecClusters, static_cast<size_t>(rMesh.GetControlPointsCount()));
    }
    return rSkin;
}

bool CFBXSkinBuilder::LoadJoints(const FbxNode& rFBXNode, const FbxMesh& rMesh, const CMeshSkin& rSkin)
{
    m_pFBXNode = &rFBXNode;
    m_pMesh = &rMesh;
    m_vecJoints.clear();
    for (const FbxCluster* pCluster : rSkin.m_vecClusters)
    {
        if (!AddJoint(*m_rNodes.at(pCluster->GetLink()), GetInverseBind(rFBXNode, *pCluster)))
        {
            return false;
        }
    }
    return AddJoint(*m_rNodes.at(&rFBXNode), FbxAMatrix());
}

CFBXSkinBuilder::CClusters CFBXSkinBuilder::FindClusters(const FbxNode& rFBXNode, const FbxMesh& rMesh)
{
    for (const FbxBlendShape* pShape : rMesh.GetSrcObjects<FbxBlendShape>())
    {
        Log(QD_FBX, LOG_WARNING, "Ignoring blend shape '%s' of node '%s': the shape it starts from is shown",
            pShape->GetName(), rFBXNode.GetName());
    }
    for (const FbxVertexCacheDeformer* pCache : rMesh.GetSrcObjects<FbxVertexCacheDeformer>())
    {
        Log(QD_FBX, LOG_WARNING, "Ignoring vertex cache '%s' of node '%s': its mesh is shown as it is",
            pCache->GetName(), rFBXNode.GetName());
    }
    CClusters vecClusters;
    std::unordered_set<const FbxObject*> setSeen; // connected more than once, they still count once
    for (const FbxSkin* pSkin : rMesh.GetSrcObjects<FbxSkin>())
    {
        if (!setSeen.insert(pSkin).second)
        {
            continue;
        }
        if (pSkin->GetSkinningType() == FbxSkin::eDualQuaternion ||
            pSkin->GetSkinningType() == FbxSkin::eBlend)
        {
            Log(QD_FBX, LOG_WARNING,
                "Skin '%s' of node '%s' blends dual quaternions: it is skinned linearly instead",
                pSkin->GetName(), rFBXNode.GetName());
        }
        m_nNumWeights += pSkin->GetClusters().size();
        for (const FbxCluster* pCluster : pSkin->GetClusters())
        {
            if (m_nNumWeights > MAX_WEIGHTS)
            {
                Log(QD_FBX, LOG_ERROR,
                    "The skins of all meshes have more than %d weights: node '%s' goes without",
                    static_cast<int>(MAX_WEIGHTS), rFBXNode.GetName());
                return {};
            }
            if (!setSeen.insert(pCluster).second)
            {
                continue;
            }
            if (m_rNodes.contains(pCluster->GetLink()))
            {
                vecClusters.push_back(pCluster);
                m_nNumWeights += pCluster->GetControlPointIndices().size();
            }
            else if (m_setUnlinked.insert(pCluster).second)
            {
                Log(QD_FBX, LOG_WARNING, "Ignoring cluster '%s' of node '%s': it has no link in the scene",
                    pCluster->GetName(), rFBXNode.GetName());
            }
        }
    }
    return vecClusters;
}

bool CFBXSkinBuilder::AddJoint(CSGNode& rNode, const FbxAMatrix& rInverseBind)
{
    m_vecJoints.push_back(
        {CSGJoint::Create(rNode.GetLocalName(), CFBXLocalTransform::ToTransform3(rInverseBind)), &rNode});
    QD_CHECK_CREATED(m_vecJoints.back().m_spJoint, false);
    return true;
}

boost::intrusive_ptr<CSGSkinVertexWeights> CFBXSkinBuilder::LoadWeights(const FbxNode& rFBXNode,
                                                                        const CClusters& rClusters,
                                                                        size_t nNumPoints)
{
    const CPointWeights objWeights(rClusters, nNumPoints);
    if (objWeights.m_nNumOutside > 0)
    {
        Log(QD_FBX, LOG_WARNING,
            "The skin of node '%s' has %d weights for points that its mesh does not have", rFBXNode.GetName(),
            static_cast<int>(objWeights.m_nNumOutside));
    }
    const auto nMeshJoint = static_cast<int32_t>(rClusters.size());
    const FbxCluster::ELinkMode eMode = rClusters.front()->GetLinkMode();
    const auto spWeights = CSGSkinVertexWeights::Create();
    QD_CHECK_CREATED(spWeights, nullptr);
    std::vector<CSGSkinWeight> vecRow;
    int nNumLimited = 0;
    int nNumAdded = 0;
    bool bMoves = false;
    for (size_t n = 0; n < nNumPoints; ++n)
    {
        const auto arrWeights = objWeights.Get(n);
        vecRow.assign(arrWeights.begin(), arrWeights.end());
        if (eMode != FbxCluster::eNormalize)
        {
            nNumAdded += eMode == FbxCluster::eAdditive && vecRow.size() > 1 ? 1 : 0;
            AddRest(vecRow, nMeshJoint);
        }
        nNumLimited += Limit(vecRow) ? 1 : 0;
        if (!CSGSkinVertexWeights::Normalize(vecRow) || vecRow.empty())
        {
            vecRow.assign(1, {nMeshJoint, 1.0f});
        }
        bMoves = bMoves || vecRow.front().m_nJoint != nMeshJoint;
        QD_CHECK_CALL(spWeights->AddVertex(vecRow), nullptr);
    }
    if (nNumAdded > 0)
    {
        Log(QD_FBX, LOG_WARNING,
            "The clusters of node '%s' are additive: what they do to %d points that follow several is added "
            "up",
            rFBXNode.GetName(), nNumAdded);
    }
    if (nNumLimited > 0)
    {
        Log(QD_FBX, LOG_WARNING, "The skin of node '%s' has more than %d weights on %d points",
            rFBXNode.GetName(), static_cast<int>(CSGSkinVertexWeights::MAX_JOINTS_PER_VERTEX), nNumLimited);
    }
    return bMoves ? spWeights : nullptr;
}

FbxAMatrix CFBXSkinBuilder::GetInverseBind(const FbxNode& rFBXNode, const FbxCluster& rCluster)
{
    if (rCluster.GetTransformMatrix())
    {
        return *rCluster.GetTransformMatrix();
    }
    const FbxAMatrix objLink = rCluster.GetTransformLinkMatrix()
                                   ? *rCluster.GetTransformLinkMatrix()
                                   : GetGlobalTransformAtBind(*rCluster.GetLink());
    return objLink.Inverse() * GetGlobalTransformAtBind(rFBXNode);
}

FbxAMatrix CFBXSkinBuilder::GetGlobalTransformAtBind(const FbxNode& rFBXNode)
{
    if (m_pPoseScene != rFBXNode.GetScene())
    {
        m_pPoseScene = rFBXNode.GetScene();
        for (const FbxPose* pPose : m_pPoseScene->GetObjects<FbxPose>())
        {
            for (int n = 0; pPose->IsBindPose() && n < pPose->GetCount(); ++n)
            {
                m_mapBindPose.emplace(pPose->GetNode(n), &pPose->GetMatrix(n));
            }
        }
    }
    const auto it = m_mapBindPose.find(&rFBXNode);
    return it != m_mapBindPose.end() ? *it->second : rFBXNode.EvaluateGlobalTransform();
}
