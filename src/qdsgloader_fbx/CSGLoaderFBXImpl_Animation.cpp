// Animations.
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdsgloader_fbx/CFBXAnimChannels.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <cmath>
#include <exception>

namespace
{

// What the stack says, else from the first key of all curves to the last.
CFBXKeyRange FindRange(const FbxAnimStack& rStack, const FbxAnimLayer& rLayer)
{
    if (!rStack.GetLocalTimeSpan().IsEmpty())
    {
        return {rStack.GetLocalTimeSpan().m_objStart.GetSecondDouble(),
                rStack.GetLocalTimeSpan().m_objStop.GetSecondDouble()};
    }
    double fBegin = HUGE_VAL;
    double fEnd = -HUGE_VAL;
    for (const FbxAnimCurveNode* pCurveNode : rLayer.GetCurveNodes())
    {
        for (const auto& rChannel : pCurveNode->GetChannels())
        {
            const int nKeys = rChannel.pCurve != nullptr ? rChannel.pCurve->KeyGetCount() : 0;
            if (nKeys > 0)
            {
                fBegin = std::min(fBegin, rChannel.pCurve->KeyGetTime(0).GetSecondDouble());
                fEnd = std::max(fEnd, rChannel.pCurve->KeyGetTime(nKeys - 1).GetSecondDouble());
            }
        }
    }
    return fBegin <= fEnd ? CFBXKeyRange{fBegin, fEnd} : CFBXKeyRange{};
}

bool HasKeys(const FbxAnimStack& rStack)
{
    return std::ranges::any_of(rStack.GetLayers(), [](const FbxAnimLayer* pLayer) {
        return std::ranges::any_of(pLayer->GetCurveNodes(), &FbxAnimCurveNode::IsAnimated);
    });
}

} // namespace

bool CSGLoaderFBXImpl::LoadAnimations(std::vector<CSGAnimation*>& rvecAnimations)
{
    if (m_pFBXScene == nullptr)
    {
        // Spelt as in the COLLADA loader, where logs have always had it so.
        Log(QD_FBX, LOG_ERROR, "Tried to load animatinos when no file was loaded.");
        return false;
    }
    LoadAllAnimations();
    for (const CSGAnimation::CAnimationPtr& rspAnimation : m_vecAnimations)
    {
        rvecAnimations.push_back(rspAnimation.get());
    }
    return true;
}

CSGAnimation::CAnimationPtr CSGLoaderFBXImpl::LoadDefaultAnimation()
{
    if (m_pFBXScene == nullptr)
    {
        Log(QD_FBX, LOG_ERROR, "Tried to load animation when no file was loaded.");
        return nullptr;
    }
    LoadAllAnimations();
    return m_spDefaultAnimation;
}

CSGAnimation::CAnimationPtr CSGLoaderFBXImpl::LoadAnimation(const CQDString& rStrName)
{
    const CSGAnimation::CAnimationPtr spDefaultAnimation = LoadDefaultAnimation();
    const auto it = std::ranges::find_if(m_vecAnimations, [&](const auto& rspAnimation) {
        return rspAnimation->GetName().GetView() == rStrName;
    });
    return it != m_vecAnimations.end() ? *it : rStrName.empty() ? spDefaultAnimation : nullptr;
}

void CSGLoaderFBXImpl::LoadAllAnimations()
{
    if (m_bAnimationsLoaded)
    {
        return;
    }
    m_bAnimationsLoaded = true;
    try
    {
        LoadAnimStacks();
    }
    catch (const std::exception& rException) // there is no memory
    {
        Log(QD_FBX, LOG_ERROR, "Failed to load the animations of '%s': %s", m_strFilename, rException.what());
        m_vecAnimations.clear();
        m_spDefaultAnimation.reset();
    }
}

void CSGLoaderFBXImpl::LoadAnimStacks()
{
    CFBXAnimChannels objChannels(m_vecHierarchy, *m_spNodePaths, m_bKeepQuaternions, m_bResample);
    for (const FbxAnimStack* pStack : m_pFBXScene->GetObjects<FbxAnimStack>())
    {
        if (pStack->GetLayers().size() > 1)
        {
            Log(QD_FBX, LOG_ERROR,
                "Animation stack '%s' had %d animation layers.  Loading stacks with only one layer is "
                "supported.",
                pStack->GetName(), static_cast<int>(pStack->GetLayers().size()));
            continue;
        }
        const CSGAnimation::CAnimationPtr spAnimation = LoadAnimStack(*pStack, objChannels);
        if (!spAnimation)
        {
            continue;
        }
        m_vecAnimations.push_back(spAnimation);
        // A file names the stack that its author saw last.
        if (!m_spDefaultAnimation || pStack->GetName() == m_strActiveAnimStack)
        {
            // Without the name, as the default animation is.
            m_spDefaultAnimation = spAnimation->Slice(spAnimation->GetBeginTime(), spAnimation->GetEndTime());
            QD_CHECK_CREATED(m_spDefaultAnimation, );
            m_spDefaultAnimation->SetName("");
        }
    }
}

CSGAnimation::CAnimationPtr CSGLoaderFBXImpl::LoadAnimStack(const FbxAnimStack& rStack,
                                                            CFBXAnimChannels& rChannels) const
{
    CFBXAnimChannels::CChannelList vecChannels;
    CFBXKeyRange objRange;
    if (!rStack.GetLayers().empty())
    {
        const FbxAnimLayer& rLayer = *rStack.GetLayers().front();
        objRange = FindRange(rStack, rLayer);
        objRange.m_fFramesPerSecond = m_pFBXScene->GetGlobalSettings().GetFrameRate();
        vecChannels = rChannels.LoadLayer(rLayer, objRange);
    }
    if (vecChannels.empty())
    {
        // Many tools write an empty stack into every file: only keys that get lost are worth a warning.
        Log(QD_FBX, HasKeys(rStack) ? LOG_WARNING : LOG_INFO, "Animation stack '%s' animates no node.",
            rStack.GetName());
        return nullptr;
    }
    const auto spAnimation = CSGAnimation::Create(vecChannels, static_cast<float>(objRange.m_fBegin),
                                                  static_cast<float>(objRange.m_fEnd));
    if (spAnimation)
    {
        spAnimation->SetName(rStack.GetName());
    }
    return spAnimation;
}
