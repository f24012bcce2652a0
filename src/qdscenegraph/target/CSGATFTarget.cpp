#include "qdscenegraph/target/CSGATFTarget.h"

#include "qdscenegraph/target/CSGATF_Param.h"
#include "qdscenegraph/target/CSGATF_ParamSwizzle.h"
#include "qdscenegraph/target/CSGATF_XFrmRotate_Angle.h"
#include "qdscenegraph/target/CSGATF_XFrmRotate_Quat.h"
#include "qdscenegraph/target/CSGATF_XFrmScale.h"
#include "qdscenegraph/target/CSGATF_XFrmTransform3.h"
#include "qdscenegraph/target/CSGATF_XFrmTranslate.h"

#include <iterator>

namespace
{

template <class ALL, class X, class Y, class Z, class TRANSFORM>
CSGATFPtr CreateVectorTarget(TRANSFORM* pTransform, ETarget eTarget)
{
    switch (eTarget)
    {
    case TARGET_ALL:
        return ALL::Create(pTransform);
    case TARGET_X:
        return X::Create(pTransform);
    case TARGET_Y:
        return Y::Create(pTransform);
    case TARGET_Z:
        return Z::Create(pTransform);
    default:
        return nullptr;
    }
}

CSGATFPtr CreateRotateTarget(CSGXFrm_Rotate* pTransform, ETarget eTarget)
{
    switch (eTarget)
    {
    case TARGET_ANGLE:
        return CSGATF_XFrmRotate_Angle::Create(pTransform);
    case TARGET_QUAT:
        return CSGATF_XFrmRotate_Quat::Create(pTransform);
    default:
        return nullptr;
    }
}

CSGATFPtr CreateParamTarget(CSGParam* pParam, ETarget eTarget)
{
    switch (eTarget)
    {
    case TARGET_ALL:
        return CSGATF_Param::Create(pParam);
    case TARGET_X:
    case TARGET_Y:
    case TARGET_Z:
        return CSGATF_ParamSwizzle::Create(pParam, eTarget - TARGET_X);
    case TARGET_R:
    case TARGET_G:
    case TARGET_B:
    case TARGET_A:
        return CSGATF_ParamSwizzle::Create(pParam, eTarget - TARGET_R);
    default:
        return nullptr;
    }
}

CSGATFPtr CreateTarget(CSGStreamable* pObject, ETarget eTarget)
{
    if (auto* pTranslate = SGStreamableCast<CSGXFrm_Translate>(pObject))
    {
        return CreateVectorTarget<CSGATF_XFrmTranslate, CSGATF_XFrmTranslate_X, CSGATF_XFrmTranslate_Y,
                                  CSGATF_XFrmTranslate_Z>(pTranslate, eTarget);
    }
    if (auto* pRotate = SGStreamableCast<CSGXFrm_Rotate>(pObject))
    {
        return CreateRotateTarget(pRotate, eTarget);
    }
    if (auto* pScale = SGStreamableCast<CSGXFrm_Scale>(pObject))
    {
        return CreateVectorTarget<CSGATF_XFrmScale, CSGATF_XFrmScale_X, CSGATF_XFrmScale_Y,
                                  CSGATF_XFrmScale_Z>(pScale, eTarget);
    }
    if (auto* pTransform3 = SGStreamableCast<CSGXFrm_Transform3>(pObject))
    {
        return eTarget == TARGET_ALL ? CSGATF_XFrmTransform3::Create(pTransform3) : nullptr;
    }
    if (auto* pParam = SGStreamableCast<CSGParam>(pObject))
    {
        return CreateParamTarget(pParam, eTarget);
    }
    return nullptr;
}

} // namespace

CSGATFPtr CSGATFTarget::Create(CSGStreamable* pObject, ETarget eTarget)
{
    QD_CHECK_ARG(pObject, nullptr);
    CSGATFPtr spTarget = CreateTarget(pObject, eTarget);
    if (!spTarget)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "A %s has no part %s (%d) that can be animated.",
            pObject->GetSGStreamableType()->GetName(), GetName(eTarget), eTarget);
    }
    return spTarget;
}

const char* CSGATFTarget::GetName(ETarget eTarget)
{
    static constexpr const char* NAMES[] = {"ALL", "X", "Y", "Z", "R", "G", "B", "A", "ANGLE", "QUAT"};
    static_assert(std::size(NAMES) == TARGET_COUNT);
    return eTarget >= 0 && eTarget < TARGET_COUNT ? NAMES[eTarget] : "UNKNOWN";
}
