// Where a node is: the transforms of a node, by the SDK's documentation of "Computing transformation
// matrices".
#include "fbxsdk/animation/FbxAnimLayer.h"
#include "fbxsdk/scene/FbxNode.h"

FbxAMatrix FbxNode::GetGeometricTransform() const
{
    return FbxAMatrix::FromTranslation(m_objGeometricTranslation) *
           FbxAMatrix::FromEuler(m_objGeometricRotation) * FbxAMatrix::FromScaling(m_objGeometricScaling);
}

FbxLocalPose FbxNode::EvaluateLocalPose(const FbxAnimLayer* pLayer, FbxTime objTime) const
{
    FbxLocalPose objPose = m_objRestPose;
    if (pLayer != nullptr)
    {
        pLayer->Evaluate(this, "Lcl Translation", objTime, objPose.T);
        pLayer->Evaluate(this, "Lcl Rotation", objTime, objPose.R);
        pLayer->Evaluate(this, "Lcl Scaling", objTime, objPose.S);
    }
    return objPose;
}

FbxAMatrix FbxNode::GetRotationMatrix(const FbxLocalPose& rPose) const
{
    return FbxAMatrix::FromQuaternion(FbxQuaternion::FromEuler(m_objPreRotation) *
                                      FbxQuaternion::FromEuler(rPose.R, m_eRotationOrder) *
                                      FbxQuaternion::FromEuler(m_objPostRotation).Inverse());
}

FbxAMatrix FbxNode::GetLocalMatrix(const FbxLocalPose& rPose) const
{
    // The rotation and scaling are simple; of the rest, all that is moved gathers in the translation.
    const FbxAMatrix objRotation = GetRotationMatrix(rPose);
    FbxAMatrix objMatrix = objRotation * FbxAMatrix::FromScaling(rPose.S);
    objMatrix.SetT(rPose.T + m_objRotationOffset + m_objRotationPivot +
                   objRotation.MultDirection(GetScalingShift(rPose)));
    return objMatrix;
}

FbxDouble3 FbxNode::GetScalingShift(const FbxLocalPose& rPose) const
{
    FbxDouble3 objShift = m_objScalingOffset + m_objScalingPivot - m_objRotationPivot;
    for (size_t n = 0; n < 3; ++n)
    {
        objShift[n] -= rPose.S[n] * m_objScalingPivot[n];
    }
    return objShift;
}

FbxAMatrix FbxNode::GetInheritedScaling(const FbxGlobalPose& rParent) const
{
    const FbxAMatrix objScaling = rParent.m_objRotation.Inverse() * rParent.m_objTransform.GetLinear();
    return m_eInheritType == eInheritRrs
               ? objScaling * FbxAMatrix::FromScaling(rParent.m_objScaling).Inverse()
               : objScaling;
}

FbxAMatrix FbxNode::GetInheritMatrix(const FbxGlobalPose& rParent, const FbxLocalPose& rPose) const
{
    FbxAMatrix objInherit;
    if (m_eInheritType == eInheritRSrs)
    {
        return objInherit;
    }
    // The plain product would be parent * rotation * ..., wanted is the parent's rotation * rotation *
    // scaling * ....
    const FbxAMatrix objRotation = GetRotationMatrix(rPose);
    objInherit = rParent.m_objTransform.GetLinear().Inverse() * rParent.m_objRotation * objRotation *
                 GetInheritedScaling(rParent) * objRotation.Inverse();
    // What stands behind it in the product is shifted as without it.
    const FbxDouble3 objShift = objRotation.MultDirection(GetScalingShift(rPose));
    objInherit.SetT(objShift - objInherit.MultDirection(objShift));
    return objInherit;
}

FbxGlobalPose FbxNode::GetGlobalPose(const FbxGlobalPose& rParent, const FbxLocalPose& rPose) const
{
    FbxGlobalPose objPose;
    objPose.m_objTransform = rParent.m_objTransform * GetLocalMatrix(rPose);
    objPose.m_objRotation = rParent.m_objRotation * GetRotationMatrix(rPose);
    objPose.m_objScaling = rPose.S;
    if (m_eInheritType != eInheritRSrs)
    {
        const FbxDouble3 objTranslation = objPose.m_objTransform.GetT();
        objPose.m_objTransform =
            objPose.m_objRotation * GetInheritedScaling(rParent) * FbxAMatrix::FromScaling(rPose.S);
        objPose.m_objTransform.SetT(objTranslation);
    }
    return objPose;
}

FbxGlobalPose FbxNode::EvaluateGlobalPose(const FbxAnimLayer* pLayer, FbxTime objTime) const
{
    std::vector<const FbxNode*> vecPath; // the outermost last
    for (const FbxNode* pNode = this; pNode != nullptr; pNode = pNode->GetParent())
    {
        vecPath.push_back(pNode);
    }
    FbxGlobalPose objPose;
    for (auto it = vecPath.rbegin(); it != vecPath.rend(); ++it)
    {
        objPose = (*it)->GetGlobalPose(objPose, (*it)->EvaluateLocalPose(pLayer, objTime));
    }
    return objPose;
}
