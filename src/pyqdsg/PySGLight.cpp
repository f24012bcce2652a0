#include "pyqdsg/PySGLight.h"

#include "pyqdsg/PyDict.h"
#include "qdscenegraph/light/CSGLight_Ambient.h"
#include "qdscenegraph/light/CSGLight_Directional.h"
#include "qdscenegraph/light/CSGLight_Point.h"
#include "qdscenegraph/light/CSGLight_Spot.h"

namespace
{

void AddAttenuation(CPyDict& rDict, const CSGLightAttenuation& rAttenuation)
{
    const float arrFactors[] = {rAttenuation.m_fConstant, rAttenuation.m_fLinear, rAttenuation.m_fQuadratic};
    rDict.Add("attenuation", arrFactors);
}

} // namespace

PyObject* PySGLight_create(const CSGLight* pLight)
{
    const CSGTypeInfo<CSGLight>* pType = pLight->GetTypeInfo();
    CPyDict objDict;
    objDict.Add("name", pLight->GetName().GetView());
    const CColor& rColor = pLight->GetColor();
    const float arrColor[] = {rColor.r, rColor.g, rColor.b};
    objDict.Add("color", arrColor);
    std::string_view strKind = "ambient";
    if (pType == &CSGLight_Directional::ms_objTypeInfo)
    {
        strKind = "directional";
    }
    else if (pType == &CSGLight_Point::ms_objTypeInfo)
    {
        strKind = "point";
        AddAttenuation(objDict, static_cast<const CSGLight_Point*>(pLight)->GetAttenuation());
    }
    else if (pType == &CSGLight_Spot::ms_objTypeInfo)
    {
        strKind = "spot";
        const auto* pSpot = static_cast<const CSGLight_Spot*>(pLight);
        AddAttenuation(objDict, pSpot->GetAttenuation());
        objDict.Add("falloff_angle", pSpot->GetFalloffAngle());
        objDict.Add("falloff_exponent", pSpot->GetFalloffExponent());
    }
    objDict.Add("kind", strKind);
    return objDict.Release();
}
