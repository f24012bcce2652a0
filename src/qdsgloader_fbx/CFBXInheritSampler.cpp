#include "qdsgloader_fbx/CFBXInheritSampler.h"

#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CFBXLocalTransform.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <unordered_map>

namespace
{

constexpr size_t FLOATS = 16;

// As CSGATF_XFrmTransform3 takes it.
void AppendMatrix(std::vector<float>& rvecFloats, const FbxAMatrix& rMatrix)
{
    for (size_t nColumn = 0; nColumn < 3; ++nColumn)
    {
        for (size_t nRow = 0; nRow < 3; ++nRow)
        {
            rvecFloats.push_back(static_cast<float>(rMatrix.Get(nRow, nColumn)));
        }
        rvecFloats.push_back(0.0f);
    }
    for (size_t nColumn = 0; nColumn < 3; ++nColumn)
    {
        rvecFloats.push_back(static_cast<float>(rMatrix.Get(3, nColumn)));
    }
    rvecFloats.push_back(1.0f);
}

boost::intrusive_ptr<CSGAnimSampler> CreateSampler(const std::vector<float>& rvecTimes,
                                                   std::span<const float> arrMatrices)
{
    const auto arrFirst = arrMatrices.first(FLOATS);
    bool bSame = true;
    for (size_t n = FLOATS; bSame && n < arrMatrices.size(); n += FLOATS)
    {
        bSame = std::ranges::equal(arrMatrices.subspan(n, FLOATS), arrFirst);
    }
    const size_t nKeys = bSame ? 1 : rvecTimes.size();
    const auto spSampler =
        CSGAnimSampler::Create(static_cast<int32_t>(nKeys), FLOATS, CSGAnimSampler::INTERP_LINEAR);
    return spSampler &&
                   spSampler->SetKeyData(std::span(rvecTimes).first(nKeys), arrMatrices.first(nKeys * FLOATS))
               ? spSampler
               : nullptr;
}

// Tells scales of 1. Many nodes may have one curve.
class CUnitScales
{
  public:
    // Whether the node has another scale than 1 at rest or in some layer.
    bool IsScaled(const FbxNode& rNode)
    {
        constexpr FbxDouble3 UNIT{{1, 1, 1}};
        return rNode.GetLclScaling() != UNIT ||
               std::ranges::any_of(rNode.GetSrcObjects<FbxAnimCurveNode>("Lcl Scaling"),
                                   [this](const FbxAnimCurveNode* pCurves) {
                                       return !std::ranges::all_of(
                                           pCurves->GetChannels(),
                                           [this](const auto& rChannel) { return IsUnit(rChannel); });
                                   });
    }

  private:
    bool IsUnit(const FbxAnimCurveNode::SChannel& rChannel)
    {
        if (rChannel.pCurve == nullptr)
        {
            return rChannel.dValue == 1;
        }
        const auto [it, bNew] = m_mapCurves.emplace(rChannel.pCurve, false);
        if (bNew)
        {
            CFBXKeyBudget objBudget;
            // Keys alone: a curve that goes on otherwise has more than one value there, too.
            const FbxAnimCurve& rCurve = *rChannel.pCurve;
            const double fFirst = rCurve.KeyGetCount() > 0 ? rCurve.KeyGetTime(0).GetSecondDouble() : 0;
            const CFBXCurveKeys objKeys(rCurve, {fFirst, fFirst}, objBudget);
            it->second = objKeys.IsConstant() && objKeys.GetConstant() == 1;
        }
        return it->second;
    }

    std::unordered_map<const FbxAnimCurve*, bool> m_mapCurves;
};

} // namespace

CFBXInheritSampler::CFBXInheritSampler(std::span<FbxNode* const> arrHierarchy)
{
    std::unordered_map<const FbxNode*, size_t> mapPlaces;
    CUnitScales objUnitScales;
    for (const FbxNode* pNode : arrHierarchy)
    {
        const size_t nPlace = m_vecNodes.size();
        const auto it = mapPlaces.find(pNode->GetParent());
        const size_t nParent = it != mapPlaces.end() ? it->second : nPlace;
        const bool bParentScaled = nParent != nPlace && m_vecNodes[nParent].m_bScaled;
        mapPlaces[pNode] = nPlace;
        m_vecNodes.push_back({pNode, nParent, bParentScaled || objUnitScales.IsScaled(*pNode),
                              bParentScaled && CFBXLocalTransform::HasInheritTransform(*pNode)});
        m_bAnyInherits = m_bAnyInherits || m_vecNodes.back().m_bInherits;
    }
}

CFBXInheritSampler::CPosedList CFBXInheritSampler::FindPosed(const FbxAnimLayer& rLayer) const
{
    // Whether the layer turns or scales a node or one above it; the node's own scale goes to its children.
    std::vector<bool> vecMoved;
    std::vector<bool> vecWanted;
    for (size_t n = 0; n < m_vecNodes.size(); ++n)
    {
        const CNode& rNode = m_vecNodes[n];
        const bool bTurned = (rNode.m_nParent != n && vecMoved[rNode.m_nParent]) ||
                             rLayer.GetCurveNode(rNode.m_pNode, "Lcl Rotation") != nullptr;
        vecWanted.push_back(rNode.m_bInherits && bTurned);
        vecMoved.push_back(bTurned || rLayer.GetCurveNode(rNode.m_pNode, "Lcl Scaling") != nullptr);
    }
    std::vector<bool> vecPosed = vecWanted;
    for (size_t n = m_vecNodes.size(); n-- > 0;)
    {
        vecPosed[m_vecNodes[n].m_nParent] = vecPosed[m_vecNodes[n].m_nParent] || vecPosed[n];
    }
    CPosedList vecResult;
    std::vector<size_t> vecPlaces(m_vecNodes.size()); // in the result
    for (size_t n = 0; n < m_vecNodes.size(); ++n)
    {
        if (vecPosed[n])
        {
            vecPlaces[n] = vecResult.size();
            vecResult.push_back({m_vecNodes[n].m_pNode, vecPlaces[m_vecNodes[n].m_nParent], vecWanted[n]});
        }
    }
    return vecResult;
}

void CFBXInheritSampler::PoseAt(CPosedList& rPosedList, const FbxAnimLayer& rLayer, FbxTime objTime)
{
    for (size_t n = 0; n < rPosedList.size(); ++n)
    {
        CPosed& rPosed = rPosedList[n];
        const FbxGlobalPose objParent =
            rPosed.m_nParent != n ? rPosedList[rPosed.m_nParent].m_objPose : FbxGlobalPose();
        const FbxLocalPose objLocal = rPosed.m_pNode->EvaluateLocalPose(&rLayer, objTime);
        rPosed.m_objPose = rPosed.m_pNode->GetGlobalPose(objParent, objLocal);
        if (rPosed.m_bWanted)
        {
            AppendMatrix(rPosed.m_vecMatrices, rPosed.m_pNode->GetInheritMatrix(objParent, objLocal));
        }
    }
}

std::vector<CFBXInheritSampler::CSampled> CFBXInheritSampler::Sample(const FbxAnimLayer& rLayer,
                                                                     const CFBXKeyRange& rRange,
                                                                     CFBXKeyBudget& rBudget) const
{
    // Looking for them costs something, too, where there are as many layers as nodes.
    if (!m_bAnyInherits)
    {
        return {};
    }
    if (!rBudget.Take(static_cast<double>(m_vecNodes.size())))
    {
        Log(QD_FBX, LOG_ERROR,
            "Nodes do not follow the scale of their parents in layer '%s': it is one of too many.",
            rLayer.GetName());
        return {};
    }
    CPosedList vecPosed = FindPosed(rLayer);
    const auto nWanted = std::ranges::count_if(vecPosed, &CPosed::m_bWanted);
    const double fFrames = rRange.CountFrames();
    // The sampler has as many again; and to pose a node takes about as long as a matrix takes memory.
    const double fPerFrame = static_cast<double>(2 * FLOATS) * static_cast<double>(nWanted) +
                             static_cast<double>(FLOATS) * static_cast<double>(vecPosed.size());
    if (nWanted > 0 && (!(fFrames <= CFBXKeyRange::MAX_FRAMES) || !rBudget.Take(fFrames * fPerFrame)))
    {
        Log(QD_FBX, LOG_ERROR,
            "%d nodes do not follow the scale of their parents through time: %g frames are too many.",
            static_cast<int>(nWanted), fFrames);
        return {};
    }
    std::vector<float> vecTimes;
    for (size_t n = 0; nWanted > 0 && n < static_cast<size_t>(fFrames); ++n)
    {
        const double fTime = rRange.GetFrameTime(n);
        vecTimes.push_back(static_cast<float>(fTime));
        PoseAt(vecPosed, rLayer, FbxTime::FromSeconds(fTime));
    }
    std::vector<CSampled> vecSampled;
    for (const CPosed& rPosed : vecPosed)
    {
        if (rPosed.m_bWanted)
        {
            vecSampled.push_back({rPosed.m_pNode, CreateSampler(vecTimes, rPosed.m_vecMatrices)});
        }
    }
    return vecSampled;
}
