#include "qdsgloader_fbx/CFBXLocalTransform.h"

#include "qdcommon/Angles.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Scale.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>

namespace
{

FbxDouble3 Negate(const FbxDouble3& rVector) { return FbxDouble3{} - rVector; }

} // namespace

CTransform3 CFBXLocalTransform::ToTransform3(const FbxAMatrix& rMatrix)
{
    CTransform3 objTransform;
    for (size_t nRow = 0; nRow < 3; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 3; ++nColumn)
        {
            objTransform.m_objMatrix.m[nRow][nColumn] = static_cast<float>(rMatrix.Get(nRow, nColumn));
        }
    }
    objTransform.m_objTranslation = ToFloat3(rMatrix.GetT());
    return objTransform;
}

CSGFloat3 CFBXLocalTransform::ToFloat3(const FbxDouble3& rVector)
{
    return {static_cast<float>(rVector[0]), static_cast<float>(rVector[1]), static_cast<float>(rVector[2])};
}

bool CFBXLocalTransform::HasInheritTransform(const FbxNode& rNode)
{
    // An even scale goes through rotations unchanged: only a node that leaves it out needs to undo it.
    switch (rNode.GetTransformationInheritType())
    {
    case FbxNode::eInheritRrSs:
        return rNode.GetScalingAbove() == FbxNode::eScaledUnevenly;
    case FbxNode::eInheritRrs:
        return rNode.GetScalingAbove() != FbxNode::eUnscaled;
    default:
        return false;
    }
}

CSGTransform::CTransformPtr CFBXLocalTransform::CreateTransform()
{
    const FbxLocalPose& rPose = m_rNode.GetRestPose();
    FbxAMatrix objBeforeRotation =
        FbxAMatrix::FromTranslation(m_rNode.GetRotationOffset() + m_rNode.GetRotationPivot());
    QD_CHECK_CALL(Append(CSGXFrm_Translate::Create(ToFloat3(rPose.T)), TRANSLATE_NAME), nullptr);
    if (HasInheritTransform(m_rNode))
    {
        const FbxAMatrix objInherit =
            m_rNode.GetInheritMatrix(m_rNode.GetParent()->GetGlobalRestPose(), rPose);
        QD_CHECK_CALL(AppendMatrix(objBeforeRotation), nullptr);
        QD_CHECK_CALL(Append(CSGXFrm_Transform3::Create(ToTransform3(objInherit)), INHERIT_NAME), nullptr);
        objBeforeRotation = FbxAMatrix();
    }
    QD_CHECK_CALL(AppendMatrix(objBeforeRotation * FbxAMatrix::FromEuler(m_rNode.GetPreRotation())), nullptr);
    QD_CHECK_CALL(m_bQuaternion ? AppendQuatRotationTransform() : AppendRotationTransforms(), nullptr);
    QD_CHECK_CALL(
        AppendMatrix(FbxAMatrix::FromEuler(m_rNode.GetPostRotation()).Inverse() *
                     FbxAMatrix::FromTranslation(m_rNode.GetScalingOffset() + m_rNode.GetScalingPivot() -
                                                 m_rNode.GetRotationPivot())),
        nullptr);
    QD_CHECK_CALL(Append(CSGXFrm_Scale::Create(ToFloat3(rPose.S)), SCALE_NAME), nullptr);
    if (m_rNode.GetScalingPivot() != FbxDouble3{})
    {
        QD_CHECK_CALL(Append(CSGXFrm_Translate::Create(ToFloat3(Negate(m_rNode.GetScalingPivot())))),
                      nullptr);
    }
    return CSGXFrm_List::Create(m_vecTransforms);
}

bool CFBXLocalTransform::Append(const CSGTransform::CTransformPtr& spTransform, const char* szName)
{
    QD_CHECK_CREATED(spTransform, false);
    spTransform->SetName(szName);
    m_vecTransforms.push_back(spTransform);
    return true;
}

bool CFBXLocalTransform::AppendMatrix(const FbxAMatrix& rMatrix)
{
    return rMatrix.IsIdentity() || Append(CSGXFrm_Transform3::Create(ToTransform3(rMatrix)));
}

bool CFBXLocalTransform::AppendQuatRotationTransform()
{
    const EFbxRotationOrder eOrder = m_rNode.GetRotationOrder();
    if (!FbxRotationAxes::IsOrder(eOrder))
    {
        Log(QD_FBX, LOG_ERROR, "Unknown rotation order %d", static_cast<int>(eOrder));
    }
    const auto objRotation = FbxQuaternion::FromEuler(m_rNode.GetLclRotation(), eOrder);
    const auto spRotate = CSGXFrm_Rotate::Create({1.0f, 0.0f, 0.0f}, 0.0f);
    QD_CHECK_CREATED(spRotate, false);
    spRotate->SetRotation({static_cast<float>(objRotation.x), static_cast<float>(objRotation.y),
                           static_cast<float>(objRotation.z), static_cast<float>(objRotation.w)});
    return Append(spRotate, ROTATE_NAME);
}

bool CFBXLocalTransform::AppendRotationTransforms()
{
    static constexpr CSGFloat3 AXES[] = {{1.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f}};
    const EFbxRotationOrder eOrder = m_rNode.GetRotationOrder();
    if (!FbxRotationAxes::IsOrder(eOrder))
    {
        Log(QD_FBX, LOG_ERROR, "Unknown rotation order %d", static_cast<int>(eOrder));
    }
    const FbxRotationAxes objAxes = FbxRotationAxes::Of(eOrder);
    for (size_t n = std::size(objAxes.m_arrAxes); n-- > 0;) // what is applied first stands last
    {
        const auto nAxis = static_cast<size_t>(objAxes.m_arrAxes[n]);
        const auto fAngle = static_cast<float>(m_rNode.GetLclRotation()[nAxis] * RADIANS_PER_DEGREE);
        if (!Append(CSGXFrm_Rotate::Create(AXES[nAxis], fAngle), ROTATE_AXIS_NAMES[nAxis]))
        {
            return false;
        }
    }
    return true;
}
