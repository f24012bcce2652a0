#include "fbxsdk/animation/FbxAnimCurveNode.h"

#include "fbxsdk/animation/FbxAnimCurve.h"
#include "fbxsdk/animation/FbxAnimLayer.h"
#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "qdcommon/CLog.h"

#include <algorithm>

namespace
{

// Components are properties of the curve node, "d|X" and so on.
constexpr std::string_view COMPONENT_PREFIX = "d|";
// Real properties have four at most. They are looked for one after the other.
constexpr size_t MAX_CHANNELS = 16;

} // namespace

std::unique_ptr<FbxAnimCurveNode> FbxAnimCurveNode::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::unique_ptr<FbxAnimCurveNode> spCurveNode(new FbxAnimCurveNode(&rObject));
    for (const CFBXProperty& rProperty : rObject.objProperties)
    {
        if (rProperty.strName.starts_with(COMPONENT_PREFIX) &&
            spCurveNode->m_vecChannels.size() < MAX_CHANNELS)
        {
            spCurveNode->m_vecChannels.push_back(
                {rProperty.strName.substr(COMPONENT_PREFIX.size()), rProperty.GetDouble(0)});
        }
    }
    return spCurveNode;
}

void FbxAnimCurveNode::OnConnected()
{
    for (const CFBXLink& rLink : GetSrcLinks())
    {
        if (FbxAnimCurve* pCurve = dynamic_cast<FbxAnimCurve*>(rLink.m_pObject))
        {
            ConnectCurve(rLink.m_strProperty, *pCurve);
        }
    }
    if (FbxAnimLayer* pLayer = FindFirstDstObject<FbxAnimLayer>())
    {
        pLayer->AddCurveNode(*this);
    }
}

void FbxAnimCurveNode::ConnectCurve(std::string_view strProperty, FbxAnimCurve& rCurve)
{
    if (strProperty.starts_with(COMPONENT_PREFIX))
    {
        strProperty.remove_prefix(COMPONENT_PREFIX.size());
    }
    const bool bHasKeys = rCurve.KeyGetCount() > 0;
    auto itChannel = std::ranges::find(m_vecChannels, strProperty, &SChannel::strName);
    if (itChannel == m_vecChannels.end() && m_vecChannels.size() == MAX_CHANNELS)
    {
        Log(FBXSDK, LOG_WARNING, "Animation curve node '%s' has more than %d components: one is left out",
            GetName(), static_cast<int>(MAX_CHANNELS));
        return;
    }
    if (itChannel == m_vecChannels.end())
    {
        itChannel = m_vecChannels.insert(itChannel, {strProperty, rCurve.Evaluate(FbxTime())});
    }
    else if (itChannel->pCurve != nullptr)
    {
        Log(FBXSDK, LOG_WARNING,
            "Animation curve node '%s' has a second curve for a component: it is left out", GetName());
        return;
    }
    itChannel->pCurve = bHasKeys ? &rCurve : nullptr;
}

const FbxAnimCurveNode::SChannel* FbxAnimCurveNode::FindChannel(std::string_view strComponent) const
{
    auto itChannel = strComponent.empty()
                         ? std::ranges::find_if(m_vecChannels, [](const SChannel& r) { return r.pCurve; })
                         : std::ranges::find(m_vecChannels, strComponent, &SChannel::strName);
    if (itChannel == m_vecChannels.end() && strComponent.empty())
    {
        itChannel = m_vecChannels.begin();
    }
    return itChannel != m_vecChannels.end() ? &*itChannel : nullptr;
}

bool FbxAnimCurveNode::IsAnimated() const
{
    return std::ranges::any_of(m_vecChannels, [](const SChannel& r) { return r.pCurve != nullptr; });
}
