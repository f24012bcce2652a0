#include "fbxsdk/animation/FbxAnimLayer.h"

#include "fbxsdk/animation/FbxAnimCurve.h"
#include "fbxsdk/animation/FbxAnimCurveNode.h"
#include "fbxsdk/animation/FbxAnimStack.h"
#include "fbxsdk/objects/CFBXObject.h"

std::unique_ptr<FbxAnimLayer> FbxAnimLayer::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    return std::unique_ptr<FbxAnimLayer>(new FbxAnimLayer(&rObject));
}

void FbxAnimLayer::OnConnected()
{
    if (FbxAnimStack* pStack = FindFirstDstObject<FbxAnimStack>())
    {
        pStack->AddLayer(*this);
    }
}

void FbxAnimLayer::AddCurveNode(FbxAnimCurveNode& rCurveNode)
{
    m_vecCurveNodes.push_back(&rCurveNode);
    for (const CFBXLink& rLink : rCurveNode.GetDstLinks())
    {
        if (rLink.m_strProperty.empty())
        {
            continue;
        }
        const auto [it, bNew] =
            m_mapCurveNodes.emplace(CProperty(rLink.m_pObject, rLink.m_strProperty), &rCurveNode);
        if (!bNew && !it->second->IsAnimated() && rCurveNode.IsAnimated())
        {
            it->second = &rCurveNode;
        }
        if (m_setDrivenObjects.insert(rLink.m_pObject).second)
        {
            m_vecDrivenObjects.push_back(rLink.m_pObject);
        }
    }
}

FbxAnimCurveNode* FbxAnimLayer::GetCurveNode(const FbxObject* pObject, std::string_view strProperty) const
{
    const auto it = m_mapCurveNodes.find({pObject, strProperty});
    return it != m_mapCurveNodes.end() ? it->second : nullptr;
}

FbxAnimCurve* FbxAnimLayer::GetCurve(const FbxObject* pObject, std::string_view strProperty,
                                     std::string_view strComponent) const
{
    const FbxAnimCurveNode* pCurveNode = GetCurveNode(pObject, strProperty);
    const FbxAnimCurveNode::SChannel* pChannel =
        pCurveNode != nullptr ? pCurveNode->FindChannel(strComponent) : nullptr;
    return pChannel != nullptr ? pChannel->pCurve : nullptr;
}

bool FbxAnimLayer::Evaluate(const FbxObject* pObject, std::string_view strProperty, FbxTime objTime,
                            FbxDouble3& rValue) const
{
    constexpr std::string_view COMPONENTS[] = {"X", "Y", "Z"};
    const FbxAnimCurveNode* pCurveNode = GetCurveNode(pObject, strProperty);
    if (pCurveNode == nullptr || !pCurveNode->IsAnimated())
    {
        return false;
    }
    for (size_t n = 0; n < std::size(COMPONENTS); ++n)
    {
        if (const FbxAnimCurveNode::SChannel* pChannel = pCurveNode->FindChannel(COMPONENTS[n]))
        {
            rValue[n] = pChannel->pCurve != nullptr ? pChannel->pCurve->Evaluate(objTime) : pChannel->dValue;
        }
    }
    return true;
}
