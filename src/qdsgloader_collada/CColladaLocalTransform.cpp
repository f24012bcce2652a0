#include "qdsgloader_collada/CColladaLocalTransform.h"

#include "qdcommon/Angles.h"
#include "qdcommon/CLog.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdscenegraph/transform/CSGXFrm_LookAt.h"
#include "qdscenegraph/transform/CSGXFrm_Rotate.h"
#include "qdscenegraph/transform/CSGXFrm_Scale.h"
#include "qdscenegraph/transform/CSGXFrm_Transform3.h"
#include "qdscenegraph/transform/CSGXFrm_Translate.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

namespace
{

using CTransformPtr = CSGTransform::CTransformPtr;
using CMake = CTransformPtr (*)(std::span<const double>);

CSGFloat3 GetFloat3(std::span<const double> arrValues, size_t nBegin)
{
    return {static_cast<float>(arrValues[nBegin]), static_cast<float>(arrValues[nBegin + 1]),
            static_cast<float>(arrValues[nBegin + 2])};
}

CTransformPtr MakeMatrix(std::span<const double> arrValues)
{
    CTransform3 objTransform;
    return CColladaConverter::GetTransform(arrValues, objTransform) ? CSGXFrm_Transform3::Create(objTransform)
                                                                    : nullptr;
}

CTransformPtr MakeTranslate(std::span<const double> arrValues)
{
    return CColladaConverter::CheckNumFloats(arrValues, 3)
               ? CSGXFrm_Translate::Create(GetFloat3(arrValues, 0))
               : nullptr;
}

CTransformPtr MakeScale(std::span<const double> arrValues)
{
    return CColladaConverter::CheckNumFloats(arrValues, 3) ? CSGXFrm_Scale::Create(GetFloat3(arrValues, 0))
                                                           : nullptr;
}

CTransformPtr MakeRotate(std::span<const double> arrValues)
{
    if (!CColladaConverter::CheckNumFloats(arrValues, 4))
    {
        return nullptr;
    }
    return CSGXFrm_Rotate::Create(GetFloat3(arrValues, 0),
                                  static_cast<float>(arrValues[3] * RADIANS_PER_DEGREE));
}

CTransformPtr MakeLookAt(std::span<const double> arrValues)
{
    if (!CColladaConverter::CheckNumFloats(arrValues, 9))
    {
        return nullptr;
    }
    return CSGXFrm_LookAt::Create(GetFloat3(arrValues, 0), GetFloat3(arrValues, 3), GetFloat3(arrValues, 6));
}

// The transform that an element makes; false when it is no transform element, null when it is not right.
template <class DOM>
bool TryMake(daeElement& rElement, CMake fnMake, CTransformPtr& rspTransform)
{
    if (rElement.typeID() != DOM::ID())
    {
        return false;
    }
    auto& rTransform = static_cast<DOM&>(rElement);
    rspTransform = fnMake(AsSpan(rTransform.getValue()));
    if (rspTransform)
    {
        rspTransform->SetName(Text(rTransform.getSid()));
    }
    return true;
}

} // namespace

bool CColladaLocalTransform::Load(domNode& rNode, CSGNode& rSGNode)
{
    std::vector<CTransformPtr> vecTransforms;
    for (const daeElementRef& rspElement : AsSpan(rNode.getContents()))
    {
        daeElement& rElement = *rspElement;
        CTransformPtr spTransform;
        if (TryMake<domMatrix>(rElement, MakeMatrix, spTransform) ||
            TryMake<domTranslate>(rElement, MakeTranslate, spTransform) ||
            TryMake<domRotate>(rElement, MakeRotate, spTransform) ||
            TryMake<domScale>(rElement, MakeScale, spTransform) ||
            TryMake<domLookat>(rElement, MakeLookAt, spTransform))
        {
            if (!spTransform)
            {
                Log(QD_COLLADA, LOG_ERROR, "Failed to load <%s sid=\"%s\"> in <node id=\"%s\">",
                    rElement.getElementName(), rElement.getAttribute("sid"), GetIDText(rNode));
                return false;
            }
            vecTransforms.push_back(spTransform);
        }
        else if (rElement.typeID() == domSkew::ID())
        {
            Log(QD_COLLADA, LOG_WARNING, "Ignoring <skew> element in <node id=\"%s\">", GetIDText(rNode));
        }
    }
    if (vecTransforms.empty())
    {
        return true;
    }
    const CTransformPtr spTransform =
        vecTransforms.size() == 1 ? vecTransforms.front() : CSGXFrm_List::Create(vecTransforms);
    if (!spTransform)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create transform tree from list.");
        return false;
    }
    const auto spData = CSGData_LocalTransform::Create(spTransform);
    if (!spData || !rSGNode.AddData(spData.get()))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to create local transform data.");
        return false;
    }
    return true;
}
