#include "qdsgloader_fbx/CFBXLightConverter.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/Angles.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdscenegraph/light/CSGLight_Directional.h"
#include "qdscenegraph/light/CSGLight_Point.h"
#include "qdscenegraph/light/CSGLight_Spot.h"
#include "qdsgloader_fbx/CFBXChildNode.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double FULL_INTENSITY = 100.0;
constexpr double HALF_SPACE = 180.0;
constexpr double MAX_FALLOFF_EXPONENT = 128.0; // what fixed-function lighting knows at most

// Takes -Z, along which lights shine here, to -Y.
const CTransform3 TURN = {{{{1.0f, 0.0f, 0.0f}, {0.0f, 0.0f, -1.0f}, {0.0f, 1.0f, 0.0f}}}, {}};

// Numbers as floats; the light can be used as long as each of them is one.
class CFloats
{
  public:
    bool AreGood() const { return m_bGood; }
    float Get(double dValue)
    {
        m_bGood = m_bGood && std::abs(dValue) <= std::numeric_limits<float>::max();
        return m_bGood ? static_cast<float>(dValue) : 0.0f;
    }

  private:
    bool m_bGood = true;
};

CSGLightAttenuation GetAttenuation(const FbxNode& rFBXNode, const FbxLight& rLight, CFloats& rFloats)
{
    if (rLight.GetDecayType() == FbxLight::eNone)
    {
        return {};
    }
    // Up to the distance where it begins the light has its full strength: a power of the distance by that
    // one. Without one it is the distance itself that counts. It is a distance in the scene, ours are in the
    // node's space; a node without any size has none.
    const FbxDouble3 objAxis = rFBXNode.EvaluateGlobalTransform().MultDirection({0.0, 1.0, 0.0});
    const double dScale = std::hypot(objAxis[0], objAxis[1], objAxis[2]);
    const double dStart = (rLight.GetDecayStart() > 0.0 ? rLight.GetDecayStart() : 1.0) / dScale;
    rFloats.Get(dStart);
    if (rLight.GetDecayType() == FbxLight::eLinear)
    {
        return {0.0f, rFloats.Get(1.0 / dStart), 0.0f};
    }
    if (rLight.GetDecayType() == FbxLight::eCubic)
    {
        Log(QD_FBX, LOG_WARNING,
            "The light of node '%s' decays with the third power of the distance: taking the second",
            rFBXNode.GetName());
    }
    return {0.0f, 0.0f, rFloats.Get(1.0 / (dStart * dStart))};
}

// The mean over the directions of a cone of the angle's cosine to this power.
double GetMeanOfPower(double dCosine, double dExponent)
{
    return (1.0 - std::pow(dCosine, dExponent + 1.0)) / ((dExponent + 1.0) * (1.0 - dCosine));
}

// FBX spots are even up to the inner cone and fall to nothing at the outer one, ours fall with a power of the
// cosine. Of those powers this one sends out as much light in all.
double GetFalloffExponent(double dInnerAngle, double dOuterAngle)
{
    const double dOuter = 0.5 * dOuterAngle * RADIANS_PER_DEGREE;
    const double dInner = std::clamp(0.5 * dInnerAngle * RADIANS_PER_DEGREE, 0.0, dOuter);
    const double dCosine = std::max(std::cos(dOuter), 0.0);
    if (dOuter - dInner < 1e-6)
    {
        return 0.0;
    }
    const double dMean = (1.0 - (std::sin(dOuter) - std::sin(dInner)) / (dOuter - dInner)) / (1.0 - dCosine);
    double dLow = 0.0;
    double dHigh = MAX_FALLOFF_EXPONENT;
    for (int n = 0; n < 40; ++n)
    {
        const double dMiddle = 0.5 * (dLow + dHigh);
        (GetMeanOfPower(dCosine, dMiddle) > dMean ? dLow : dHigh) = dMiddle;
    }
    return dLow;
}

CSGLight_Spot::CCone GetCone(const FbxLight& rLight, CFloats& rFloats)
{
    const double dOuter = std::clamp(rLight.GetOuterAngle(), 0.0, HALF_SPACE);
    return {rFloats.Get(dOuter), rFloats.Get(GetFalloffExponent(rLight.GetInnerAngle(), dOuter))};
}

boost::intrusive_ptr<CSGLight> Create(const FbxNode& rFBXNode, const FbxLight& rLight, const CColor& rColor,
                                      CFloats& rFloats)
{
    const CQDCompactString strName(rLight.GetName().empty() ? rFBXNode.GetName() : rLight.GetName());
    switch (rLight.GetLightType())
    {
    case FbxLight::eDirectional:
        return CSGLight_Directional::Create(strName, rColor);
    case FbxLight::eSpot:
        return CSGLight_Spot::Create(strName, rColor, GetAttenuation(rFBXNode, rLight, rFloats),
                                     GetCone(rLight, rFloats));
    case FbxLight::eArea:
        // A small area sends out light by the cosine of the angle.
        Log(QD_FBX, LOG_WARNING,
            "The area light of node '%s' becomes a spot light over the half space before it",
            rFBXNode.GetName());
        return CSGLight_Spot::Create(strName, rColor, GetAttenuation(rFBXNode, rLight, rFloats),
                                     {static_cast<float>(HALF_SPACE), 1.0f});
    case FbxLight::eVolume:
        Log(QD_FBX, LOG_WARNING, "The volume light of node '%s' becomes a point light", rFBXNode.GetName());
        break;
    case FbxLight::ePoint:
        break;
    }
    return CSGLight_Point::Create(strName, rColor, GetAttenuation(rFBXNode, rLight, rFloats));
}

} // namespace

boost::intrusive_ptr<CSGLight> CFBXLightConverter::Convert(const FbxNode& rFBXNode, const FbxLight& rLight)
{
    if (!rLight.GetCastLight())
    {
        Log(QD_FBX, LOG_WARNING, "Ignoring the light of node '%s': it is switched off", rFBXNode.GetName());
        return nullptr;
    }
    CFloats objFloats;
    const FbxDouble3 objColor = rLight.GetColor() * (rLight.GetIntensity() / FULL_INTENSITY);
    const CColor objFinal = {objFloats.Get(objColor[0]), objFloats.Get(objColor[1]),
                             objFloats.Get(objColor[2]), 1.0f};
    const auto spLight = Create(rFBXNode, rLight, objFinal, objFloats);
    if (!objFloats.AreGood())
    {
        Log(QD_FBX, LOG_WARNING, "Ignoring the light of node '%s': not all of its values are numbers",
            rFBXNode.GetName());
        return nullptr;
    }
    return spLight;
}

bool CFBXLightConverter::AddToNode(CSGNode& rSGNode, const FbxNode& rFBXNode, const FbxLight& rLight)
{
    const auto spLight = Convert(rFBXNode, rLight);
    if (!spLight)
    {
        return true;
    }
    const CQDString& rName = rLight.GetName();
    CSGNode* pChild = CFBXChildNode::Add(rSGNode, rName.empty() ? "light" : rName, TURN);
    QD_CHECK_NOT_NULL(pChild, false);
    const auto spLightSet = CSGData_LightSet::Create();
    QD_CHECK_CREATED(spLightSet, false);
    return spLightSet->AddLight(spLight) && pChild->AddData(spLightSet.get());
}
