#include "fbxsdk/animation/FbxAnimLayer.h"

#include "fbxsdk/animation/FbxAnimCurve.h"
#include "fbxsdk/animation/FbxAnimCurveNode.h"
#include "fbxsdk/objects/CFBXObject.h"

std::unique_ptr<FbxAnimLayer> FbxAnimLayer::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    return std::unique_ptr<FbxAnimLayer>(new FbxAnimLayer(&rObject));
}

void FbxAnimLayer::OnConnected()
{
    m_vecCurveNodes = GetSrcObjects<FbxAnimCurveNode>();
    for (FbxAnimCurveNode* pCurveNode : m_vecCurveNodes)
    {
        for (const CFBXLink& rLink : pCurveNode->GetDstLinks())
        {
            if (!rLink.m_strProperty.empty())
            {
                m_mapProperties[rLink.m_pObject].push_back({rLink.m_strProperty, pCurveNode});
            }
        }
    }
}

FbxAnimCurveNode* FbxAnimLayer::GetCurveNode(const FbxObject* pObject, std::string_view strProperty) const
{
    FbxAnimCurveNode* pFound = nullptr;
    const auto itProperties = m_mapProperties.find(pObject);
    if (itProperties != m_mapProperties.end())
    {
        for (const SProperty& rProperty : itProperties->second)
        {
            if (rProperty.strName == strProperty)
            {
                if (rProperty.pCurveNode->IsAnimated())
                {
                    return rProperty.pCurveNode;
                }
                pFound = pFound != nullptr ? pFound : rProperty.pCurveNode;
            }
        }
    }
    return pFound;
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
