#include "fbxsdk/scene/FbxNode.h"

#include "fbxsdk/animation/FbxAnimCurveNode.h"
#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/material/FbxSurfaceMaterial.h"
#include "fbxsdk/scene/FbxNodeAttribute.h"
#include "qdcommon/CLogChecks.h"

#include <algorithm>

FbxNode::FbxNode(const CFBXObject* pObject) : FbxObject(pObject)
{
    constexpr FbxDouble3 ONES{1, 1, 1};
    m_objRestPose.T = FindProperty("Lcl Translation").GetDouble3();
    m_objRestPose.R = FindProperty("Lcl Rotation").GetDouble3();
    m_objRestPose.S = FindProperty("Lcl Scaling").GetDouble3(ONES);
    m_objRotationOffset = FindProperty("RotationOffset").GetDouble3();
    m_objRotationPivot = FindProperty("RotationPivot").GetDouble3();
    m_objScalingOffset = FindProperty("ScalingOffset").GetDouble3();
    m_objScalingPivot = FindProperty("ScalingPivot").GetDouble3();
    m_objGeometricTranslation = FindProperty("GeometricTranslation").GetDouble3();
    m_objGeometricRotation = FindProperty("GeometricRotation").GetDouble3();
    m_objGeometricScaling = FindProperty("GeometricScaling").GetDouble3(ONES);
    if (FindProperty("RotationActive").GetBool() && !FindProperty("RotationSpaceForLimitOnly").GetBool())
    {
        m_objPreRotation = FindProperty("PreRotation").GetDouble3();
        m_objPostRotation = FindProperty("PostRotation").GetDouble3();
        m_eRotationOrder = static_cast<EFbxRotationOrder>(FindProperty("RotationOrder").GetInt(eEulerXYZ));
    }
    m_eInheritType = FindProperty("InheritType").GetEnum(eInheritRrSs, eInheritRrs, eInheritRrSs);
    m_bVisibility = FindProperty("Visibility").GetDouble(1) != 0;
    m_bShow = FindProperty("Show").GetBool(true);
}

std::unique_ptr<FbxNode> FbxNode::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    return std::unique_ptr<FbxNode>(new FbxNode(&rObject));
}

std::unique_ptr<FbxNode> FbxNode::CreateRoot()
{
    std::unique_ptr<FbxNode> spRoot(new FbxNode(nullptr));
    spRoot->SetName("RootNode");
    return spRoot;
}

void FbxNode::OnConnected()
{
    // Real nodes have one, perhaps two. Each is converted with the materials of all.
    constexpr size_t MAX_ATTRIBUTES = 32;
    m_vecAttributes = GetSrcObjects<FbxNodeAttribute>("");
    if (m_vecAttributes.size() > MAX_ATTRIBUTES)
    {
        Log(FBXSDK, LOG_WARNING, "Node '%s' has %d attributes: only the first %d are taken", GetName(),
            static_cast<int>(m_vecAttributes.size()), static_cast<int>(MAX_ATTRIBUTES));
        m_vecAttributes.resize(MAX_ATTRIBUTES);
    }
    m_vecMaterials = GetSrcObjects<FbxSurfaceMaterial>("");
    m_bLclScalingAnimated = !GetSrcObjects<FbxAnimCurveNode>("Lcl Scaling").empty();
}

void FbxNode::OnPlaced()
{
    if (m_pParent != nullptr)
    {
        const FbxDouble3& rScaling = m_pParent->m_objRestPose.S;
        const bool bEven = rScaling[0] == rScaling[1] && rScaling[1] == rScaling[2];
        const EScaling eOfParent = m_pParent->m_bLclScalingAnimated || !bEven ? eScaledUnevenly
                                   : rScaling[0] != 1                         ? eScaledEvenly
                                                                              : eUnscaled;
        m_eScalingAbove = std::max(eOfParent, m_pParent->m_eScalingAbove);
        m_objGlobalRestPose = GetGlobalPose(m_pParent->m_objGlobalRestPose, m_objRestPose);
    }
    else
    {
        m_objGlobalRestPose = GetGlobalPose(FbxGlobalPose(), m_objRestPose);
    }
}

bool FbxNode::SetNodeAttribute(int n, FbxNodeAttribute* pAttribute)
{
    QD_CHECK_ARG(pAttribute, false);
    QD_ASSERT(n >= 0 && n < GetNodeAttributeCount(), false);
    m_vecAttributes[static_cast<size_t>(n)] = pAttribute;
    return true;
}
