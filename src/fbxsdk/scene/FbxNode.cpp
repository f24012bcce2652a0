#include "fbxsdk/scene/FbxNode.h"

#include "fbxsdk/material/FbxSurfaceMaterial.h"
#include "fbxsdk/scene/FbxNodeAttribute.h"
#include "qdcommon/CLogChecks.h"

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
    m_bRotationActive =
        FindProperty("RotationActive").GetBool() && !FindProperty("RotationSpaceForLimitOnly").GetBool();
    if (m_bRotationActive)
    {
        m_objPreRotation = FindProperty("PreRotation").GetDouble3();
        m_objPostRotation = FindProperty("PostRotation").GetDouble3();
        m_eRotationOrder = static_cast<EFbxRotationOrder>(FindProperty("RotationOrder").GetInt(eEulerXYZ));
    }
    const int64_t nInheritType = FindProperty("InheritType").GetInt(eInheritRrSs);
    m_eInheritType = nInheritType == eInheritRSrs  ? eInheritRSrs
                     : nInheritType == eInheritRrs ? eInheritRrs
                                                   : eInheritRrSs;
    m_dVisibility = FindProperty("Visibility").GetDouble(1);
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
    m_vecAttributes = GetSrcObjects<FbxNodeAttribute>("");
    m_vecMaterials = GetSrcObjects<FbxSurfaceMaterial>("");
}

bool FbxNode::SetNodeAttribute(int n, FbxNodeAttribute* pAttribute)
{
    QD_CHECK_ARG(pAttribute, false);
    QD_ASSERT(n >= 0 && n < GetNodeAttributeCount(), false);
    m_vecAttributes[static_cast<size_t>(n)] = pAttribute;
    return true;
}
