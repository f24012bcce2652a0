#include "qdsgloader_collada/CColladaLights.h"

#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdscenegraph/light/CSGLight_Ambient.h"
#include "qdscenegraph/light/CSGLight_Directional.h"
#include "qdscenegraph/light/CSGLight_Point.h"
#include "qdscenegraph/light/CSGLight_Spot.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaInstance.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <cmath>

namespace
{

// Reads the values of one light. It can be used as long as each of them is a number that a float holds; the
// first that is not is reported.
class CReader
{
  public:
    explicit CReader(const char* szLight) : m_szLight(szLight) {}

    bool IsGood() const { return m_bGood; }

    // White without a color. Only the first three values count: there are exporters that write an opacity.
    CColor GetColor(const domTargetableFloat3* pElement)
    {
        CColor objColor{1.0f, 1.0f, 1.0f, 1.0f};
        if (pElement == nullptr)
        {
            return objColor;
        }
        const auto arrValues = AsSpan(pElement->getValue());
        if (arrValues.size() < 3)
        {
            Log(QD_COLLADA, LOG_WARNING, "Ignoring <light id=\"%s\"> whose <color> has %d values", m_szLight,
                static_cast<int>(arrValues.size()));
            m_bGood = false;
            return objColor;
        }
        objColor.r = ToFloat("color", arrValues[0]);
        objColor.g = ToFloat("color", arrValues[1]);
        objColor.b = ToFloat("color", arrValues[2]);
        return objColor;
    }

    void Read(domTargetableFloat* pElement, float& rfValue)
    {
        if (pElement != nullptr)
        {
            rfValue = ToFloat(pElement->getElementName(), pElement->getValue());
        }
    }

    // Of a point light or a spot light.
    template <class LIGHT>
    CSGLightAttenuation GetAttenuation(const LIGHT& rLight)
    {
        CSGLightAttenuation objAttenuation;
        Read(rLight.getConstant_attenuation(), objAttenuation.m_fConstant);
        Read(rLight.getLinear_attenuation(), objAttenuation.m_fLinear);
        Read(rLight.getQuadratic_attenuation(), objAttenuation.m_fQuadratic);
        return objAttenuation;
    }

  private:
    float ToFloat(const char* szElement, double fValue)
    {
        if (std::abs(fValue) <= std::numeric_limits<float>::max())
        {
            return static_cast<float>(fValue);
        }
        if (m_bGood)
        {
            Log(QD_COLLADA, LOG_WARNING, "Ignoring <light id=\"%s\"> whose <%s> is %g", m_szLight, szElement,
                fValue);
        }
        m_bGood = false;
        return 0.0f;
    }

    const char* m_szLight;
    bool m_bGood = true;
};

// False (reported) without memory; a light that cannot be used becomes null (reported).
bool Convert(const domLight& rLight, boost::intrusive_ptr<CSGLight>& rspLight)
{
    const char* szName = FirstText({rLight.getId(), rLight.getName()});
    CReader objReader(szName);
    const domLight::domTechnique_common* pTechnique = rLight.getTechnique_common();
    const auto Keep = [&](const auto& spLight) {
        rspLight = objReader.IsGood() ? spLight : nullptr;
        return spLight != nullptr;
    };
    if (pTechnique != nullptr && pTechnique->getAmbient() != nullptr)
    {
        const CColor objColor = objReader.GetColor(pTechnique->getAmbient()->getColor());
        return Keep(CSGLight_Ambient::Create(szName, objColor));
    }
    if (pTechnique != nullptr && pTechnique->getDirectional() != nullptr)
    {
        const CColor objColor = objReader.GetColor(pTechnique->getDirectional()->getColor());
        return Keep(CSGLight_Directional::Create(szName, objColor));
    }
    if (pTechnique != nullptr && pTechnique->getPoint() != nullptr)
    {
        const auto& rPoint = *pTechnique->getPoint();
        const CColor objColor = objReader.GetColor(rPoint.getColor());
        return Keep(CSGLight_Point::Create(szName, objColor, objReader.GetAttenuation(rPoint)));
    }
    if (pTechnique != nullptr && pTechnique->getSpot() != nullptr)
    {
        const auto& rSpot = *pTechnique->getSpot();
        const CColor objColor = objReader.GetColor(rSpot.getColor());
        const CSGLightAttenuation objAttenuation = objReader.GetAttenuation(rSpot);
        CSGLight_Spot::CCone objCone;
        objReader.Read(rSpot.getFalloff_angle(), objCone.m_fFalloffAngle);
        objReader.Read(rSpot.getFalloff_exponent(), objCone.m_fFalloffExponent);
        return Keep(CSGLight_Spot::Create(szName, objColor, objAttenuation, objCone));
    }
    Log(QD_COLLADA, LOG_WARNING,
        "Ignoring <light id=\"%s\"> without <ambient>, <directional>, <point> or <spot>", szName);
    return true;
}

} // namespace

bool CColladaLights::LoadLibraries(domCOLLADA& rRoot)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_lights_array()))
    {
        for (const auto& rspLight : AsSpan(rspLibrary->getLight_array()))
        {
            if (!Convert(*rspLight, m_mapLights[rspLight]))
            {
                return false;
            }
        }
    }
    return true;
}

bool CColladaLights::AddToNode(domNode& rNode, CSGNode& rSGNode) const
{
    boost::intrusive_ptr<CSGData_LightSet> spLightSet;
    for (const auto& rspInstance : AsSpan(rNode.getInstance_light_array()))
    {
        const auto* pLight = CColladaInstance::GetTarget<domLight>(*rspInstance);
        const auto it = m_mapLights.find(pLight);
        if (it == m_mapLights.end() || !it->second)
        {
            continue;
        }
        if (!spLightSet)
        {
            spLightSet = CSGData_LightSet::Create();
            QD_CHECK_CREATED(spLightSet, false);
        }
        QD_CHECK_CALL(spLightSet->AddLight(it->second), false);
    }
    return !spLightSet || rSGNode.AddData(spLightSet.get());
}
