#include "qdsgloader_fbx/CFBXAnimChannels.h"

#include "qdcommon/Angles.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/reference/CSGATFRef_Visibility.h"
#include "qdscenegraph/reference/CSGRefKind.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdsgloader_fbx/CFBXLocalTransform.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr const char* TRANSLATION = "Lcl Translation";
constexpr const char* ROTATION = "Lcl Rotation";
constexpr const char* SCALING = "Lcl Scaling";
constexpr const char* VISIBILITY = "Visibility";

// What a curve's default and a property say of the same value differs by the digits that are written.
bool IsSame(double fLeft, double fRight)
{
    constexpr double TOLERANCE = 1e-6;
    return std::abs(fLeft - fRight) <= TOLERANCE * std::max(1.0, std::abs(fRight));
}

} // namespace

CFBXAnimChannels::CFBXAnimChannels(std::span<FbxNode* const> arrHierarchy, const CFBXNodePaths& rPaths,
                                   bool bKeepQuaternions, bool bResample)
    : m_arrHierarchy(arrHierarchy),
      m_rPaths(rPaths),
      m_objInheritSampler(arrHierarchy),
      m_bKeepQuaternions(bKeepQuaternions),
      m_bResample(bResample)
{
    for (const FbxNode* pNode : arrHierarchy)
    {
        m_mapPlaces.emplace(pNode, m_mapPlaces.size());
        for (const CFBXLink& rLink : pNode->GetSrcLinks())
        {
            const auto* pCurveNode = dynamic_cast<const FbxAnimCurveNode*>(rLink.m_pObject);
            if (pCurveNode != nullptr && pCurveNode->IsAnimated())
            {
                auto& [pFirst, bMore] = m_mapAnimated[{pNode, rLink.m_strProperty}];
                bMore = bMore || (pFirst != nullptr && pFirst != pCurveNode);
                pFirst = pFirst != nullptr ? pFirst : pCurveNode;
            }
        }
    }
}

CFBXAnimChannels::CChannelList CFBXAnimChannels::LoadLayer(const FbxAnimLayer& rLayer,
                                                           const CFBXKeyRange& rRange)
{
    m_pLayer = &rLayer;
    m_objRange = rRange;
    // Files may have as many layers as nodes: those that the layer drives are all that it looks at.
    std::vector<size_t> vecPlaces;
    for (const FbxObject* pObject : rLayer.GetDrivenObjects())
    {
        if (const auto it = m_mapPlaces.find(pObject); it != m_mapPlaces.end())
        {
            vecPlaces.push_back(it->second);
        }
    }
    std::ranges::sort(vecPlaces);
    for (const size_t nPlace : vecPlaces)
    {
        const FbxNode* pNode = m_arrHierarchy[nPlace];
        LoadVector(*pNode, TRANSLATION, pNode->GetLclTranslation(), CFBXLocalTransform::TRANSLATE_NAME);
        LoadRotation(*pNode);
        LoadVector(*pNode, SCALING, pNode->GetLclScaling(), CFBXLocalTransform::SCALE_NAME);
        LoadVisibility(*pNode);
    }
    for (const auto& rSampled : m_objInheritSampler.Sample(rLayer, rRange, m_objBudget))
    {
        AddTransformChannel(*rSampled.m_pNode, CFBXLocalTransform::INHERIT_NAME, TARGET_ALL,
                            rSampled.m_spSampler);
    }
    return std::exchange(m_vecChannels, {});
}

bool CFBXAnimChannels::IsAnimatedElsewhere(const FbxNode& rNode, std::string_view strProperty,
                                           const FbxAnimCurveNode* pCurveNode)
{
    const auto it = m_mapAnimated.find({&rNode, strProperty});
    return it != m_mapAnimated.end() && (it->second.first != pCurveNode || it->second.second);
}

std::optional<CFBXCurveKeys> CFBXAnimChannels::LoadCurve(const FbxNode& rNode, const FbxAnimCurve& rCurve,
                                                         bool bResample)
{
    if (!m_objBudget.TakeKeysOf(rCurve))
    {
        Log(QD_FBX, LOG_ERROR,
            "A curve of node '%s' is left out: it drives too many nodes, with %d keys each.", rNode.GetName(),
            rCurve.KeyGetCount());
        return std::nullopt;
    }
    CFBXKeyRange objRange = m_objRange;
    if (!bResample)
    {
        objRange.m_fFramesPerSecond = 0;
    }
    CFBXCurveKeys objKeys(rCurve, objRange, m_objBudget);
    if (objKeys.IsCut())
    {
        Log(QD_FBX, LOG_ERROR, "A curve of node '%s' has its own keys alone: %g seconds of it are too many.",
            rNode.GetName(), objRange.m_fEnd - objRange.m_fBegin);
    }
    return objKeys;
}

bool CFBXAnimChannels::LoadCurves(const FbxNode& rNode, const char* szProperty, const FbxDouble3& rRest,
                                  CFBXAnimCurveTranslator::CCurves& rarrCurves, CWanted& rarrWanted)
{
    static constexpr std::string_view COMPONENTS[] = {"X", "Y", "Z"};
    const FbxAnimCurveNode* pCurveNode = m_pLayer->GetCurveNode(&rNode, szProperty);
    if (pCurveNode == nullptr)
    {
        return false;
    }
    const bool bElsewhere = IsAnimatedElsewhere(rNode, szProperty, pCurveNode);
    for (size_t n = 0; n < std::size(COMPONENTS); ++n)
    {
        const auto* pChannel = pCurveNode->FindChannel(COMPONENTS[n]);
        const FbxAnimCurve* pCurve = pChannel != nullptr ? pChannel->pCurve : nullptr;
        if (pCurve != nullptr && pCurve->KeyGetCount() > 0)
        {
            std::optional<CFBXCurveKeys> objKeys = LoadCurve(rNode, *pCurve, m_bResample);
            rarrWanted[n] = objKeys.has_value();
            rarrCurves[n] = objKeys ? std::move(*objKeys) : CFBXCurveKeys(rRest[n]);
            continue;
        }
        const double fValue = pCurve != nullptr     ? pCurve->Evaluate(FbxTime())
                              : pChannel != nullptr ? pChannel->dValue
                                                    : rRest[n];
        rarrCurves[n] = CFBXCurveKeys(fValue);
        rarrWanted[n] = bElsewhere || !IsSame(fValue, rRest[n]);
    }
    return std::ranges::find(rarrWanted, true) != rarrWanted.end();
}

void CFBXAnimChannels::LoadVector(const FbxNode& rNode, const char* szProperty, const FbxDouble3& rRest,
                                  const char* szTransform)
{
    CFBXAnimCurveTranslator::CCurves arrCurves;
    CWanted arrWanted{};
    if (!LoadCurves(rNode, szProperty, rRest, arrCurves, arrWanted))
    {
        return;
    }
    CFBXAnimCurveTranslator objTranslator(std::move(arrCurves));
    if (objTranslator.Analyze())
    {
        AddTransformChannel(rNode, szTransform, TARGET_ALL, objTranslator.CreateSampler(1));
        return;
    }
    constexpr ETarget TARGETS[] = {TARGET_X, TARGET_Y, TARGET_Z};
    for (size_t n = 0; n < std::size(TARGETS); ++n)
    {
        if (arrWanted[n])
        {
            AddTransformChannel(rNode, szTransform, TARGETS[n], objTranslator.CreateSampler(n, 1));
        }
    }
}

void CFBXAnimChannels::LoadRotation(const FbxNode& rNode)
{
    CFBXAnimCurveTranslator::CCurves arrCurves;
    CWanted arrWanted{};
    if (!LoadCurves(rNode, ROTATION, rNode.GetLclRotation(), arrCurves, arrWanted))
    {
        return;
    }
    CFBXAnimCurveTranslator objTranslator(std::move(arrCurves));
    if (m_bKeepQuaternions)
    {
        if (objTranslator.Analyze())
        {
            AddTransformChannel(rNode, CFBXLocalTransform::ROTATE_NAME, TARGET_QUAT,
                                objTranslator.CreateQuaternionSampler(rNode.GetRotationOrder()));
            return;
        }
        Log(QD_FBX, LOG_ERROR,
            "Rotation for node '%s' is animated and cannot be merged into a single animation while using "
            "quaternions for rotations.",
            rNode.GetName());
        objTranslator.OutputCurves();
        return;
    }
    for (size_t n = 0; n < CFBXAnimCurveTranslator::NUM_CURVES; ++n)
    {
        if (arrWanted[n])
        {
            AddTransformChannel(rNode, CFBXLocalTransform::ROTATE_AXIS_NAMES[n], TARGET_ANGLE,
                                objTranslator.CreateSampler(n, RADIANS_PER_DEGREE));
        }
    }
}

void CFBXAnimChannels::LoadVisibility(const FbxNode& rNode)
{
    const FbxAnimCurve* pCurve = m_pLayer->GetCurve(&rNode, VISIBILITY);
    // A node that is not shown at all is seen at no time.
    if (pCurve == nullptr || pCurve->KeyGetCount() == 0 || !rNode.GetShow())
    {
        return;
    }
    std::optional<CFBXCurveKeys> objKeys = LoadCurve(rNode, *pCurve, false);
    if (!objKeys)
    {
        return;
    }
    CFBXAnimCurveTranslator::CCurves arrCurves;
    arrCurves[0] = std::move(*objKeys);
    const CFBXAnimCurveTranslator objTranslator(std::move(arrCurves));
    const CSGRefPathPtr spPath = m_rPaths.CreatePath(rNode);
    if (spPath && spPath->AddRef(CSGATFRef_Visibility::Create()))
    {
        AddChannel(m_rPaths.GetGlobalName(rNode) + "/visibility", objTranslator.CreateSampler(size_t{0}, 1),
                   spPath);
    }
}

void CFBXAnimChannels::AddTransformChannel(const FbxNode& rNode, const char* szTransform, ETarget eTarget,
                                           const CSamplerPtr& spSampler)
{
    const CSGRefPathPtr spPath = m_rPaths.CreatePath(rNode);
    if (spPath && spPath->AddRef(CSGRef_DataByType::Create(CSGData_LocalTransform::SG_TYPE_NAME)) &&
        spPath->AddRef(CSGRef_TransformByName::Create(szTransform)) &&
        spPath->AddRef(CSGATFRef_Target::Create(eTarget)))
    {
        AddChannel(m_rPaths.GetGlobalName(rNode) + "/" + szTransform + "." + CSGATFTarget::GetName(eTarget),
                   spSampler, spPath);
    }
}

void CFBXAnimChannels::AddChannel(const CQDString& rName, const CSamplerPtr& spSampler,
                                  const CSGRefPathPtr& spPath)
{
    if (const CSGAnimChannelPtr spChannel = CSGAnimChannel::Create(rName, spSampler, spPath))
    {
        m_vecChannels.push_back(spChannel);
    }
}
