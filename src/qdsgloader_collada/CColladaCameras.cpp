#include "qdsgloader_collada/CColladaCameras.h"

#include "qdcommon/Angles.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/camera/CSGCam_OrthoYMag.h"
#include "qdscenegraph/camera/CSGCam_PerspYFOV.h"
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaInstance.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <cmath>
#include <vector>

namespace
{

using CCameraPtr = boost::intrusive_ptr<CSGCamera>;

constexpr double INFINITE = std::numeric_limits<double>::infinity();

// The values of one camera. It can be used when all that are read can be; the first that cannot is reported.
class CValues
{
  public:
    explicit CValues(const char* szCamera) : m_szCamera(szCamera) {}

    bool IsGood() const { return m_bGood; }

    // A number above 0; 0 when the element is not there.
    double Get(const char* szElement, const domTargetableFloat* pElement, double fBelow = INFINITE)
    {
        return pElement != nullptr ? Check(szElement, pElement->getValue(), 0.0, fBelow) : 0.0;
    }
    double GetAspectRatio(const domTargetableFloat* pElement)
    {
        return pElement != nullptr && pElement->getValue() == 0.0 ? 0.0 : Get("aspect_ratio", pElement);
    }
    double GetRequired(const char* szElement, const domTargetableFloat* pElement, double fAbove)
    {
        if (pElement != nullptr)
        {
            return Check(szElement, pElement->getValue(), fAbove, INFINITE);
        }
        Lack("<" + CQDString(szElement) + ">");
        return 0.0;
    }
    // The value, which must lie between the bounds, and do so as a float.
    double Check(const char* szElement, double fValue, double fAbove, double fBelow)
    {
        if (std::abs(fValue) <= std::numeric_limits<float>::max() && static_cast<float>(fValue) > fAbove &&
            static_cast<float>(fValue) < fBelow)
        {
            return fValue;
        }
        if (m_bGood)
        {
            Log(QD_COLLADA, LOG_WARNING, "Ignoring <camera id=\"%s\"> whose <%s> is %g", m_szCamera,
                szElement, fValue);
        }
        m_bGood = false;
        return 0.0;
    }
    void Lack(const CQDString& rElements)
    {
        if (m_bGood)
        {
            Log(QD_COLLADA, LOG_WARNING, "Ignoring <camera id=\"%s\"> without %s", m_szCamera, rElements);
        }
        m_bGood = false;
    }

  private:
    const char* m_szCamera;
    bool m_bGood = true;
};

// What the two kinds of camera have in common. Width and height are those of half the picture; either may be
// 0, and is not given then.
template <class DOM>
CSGCamera::CFrame GetFrame(CValues& rValues, const DOM& rCamera, double fNearest, double fWidth,
                           double& rfHeight)
{
    double fAspectRatio = rValues.GetAspectRatio(rCamera.getAspect_ratio());
    if (rfHeight == 0.0)
    {
        rfHeight = fAspectRatio > 0.0 ? fWidth / fAspectRatio : fWidth;
    }
    if (fAspectRatio == 0.0)
    {
        fAspectRatio = fWidth > 0.0 ? fWidth / rfHeight : 1.0;
    }
    const double fNear = rValues.GetRequired("znear", rCamera.getZnear(), fNearest);
    const double fFar = rValues.GetRequired("zfar", rCamera.getZfar(), fNear);
    if (rValues.IsGood())
    {
        rValues.Check("aspect_ratio", fAspectRatio, 0.0, INFINITE);
    }
    return rValues.IsGood() ? CSGCamera::CFrame{static_cast<float>(fAspectRatio), static_cast<float>(fNear),
                                                static_cast<float>(fFar)}
                            : CSGCamera::CFrame();
}

CCameraPtr Convert(CValues& rValues, const char* szName,
                   const domCamera::domOptics::domTechnique_common::domPerspective& rCamera)
{
    const double fXFOV = rValues.Get("xfov", rCamera.getXfov(), 180.0);
    const double fYFOV = rValues.Get("yfov", rCamera.getYfov(), 180.0);
    if (fXFOV == 0.0 && fYFOV == 0.0)
    {
        rValues.Lack("<xfov> or <yfov>");
    }
    // Of the picture at the distance 1.
    const double fWidth = std::tan(0.5 * fXFOV * RADIANS_PER_DEGREE);
    double fHeight = std::tan(0.5 * fYFOV * RADIANS_PER_DEGREE);
    const CSGCamera::CFrame objFrame = GetFrame(rValues, rCamera, 0.0, fWidth, fHeight);
    const double fResult = 2.0 * std::atan(fHeight) / RADIANS_PER_DEGREE;
    const auto fFinal = static_cast<float>(rValues.Check("yfov", fResult, 0.0, 180.0));
    return CSGCam_PerspYFOV::Create(szName, fFinal, objFrame);
}

CCameraPtr Convert(CValues& rValues, const char* szName,
                   const domCamera::domOptics::domTechnique_common::domOrthographic& rCamera)
{
    const double fXMag = rValues.Get("xmag", rCamera.getXmag());
    double fYMag = rValues.Get("ymag", rCamera.getYmag());
    if (fXMag == 0.0 && fYMag == 0.0)
    {
        rValues.Lack("<xmag> or <ymag>");
    }
    // Such a camera may well see what lies behind its place.
    const CSGCamera::CFrame objFrame = GetFrame(rValues, rCamera, -INFINITE, fXMag, fYMag);
    return CSGCam_OrthoYMag::Create(szName, static_cast<float>(rValues.Check("ymag", fYMag, 0.0, INFINITE)),
                                    objFrame);
}

// False (reported) without memory; a camera that cannot be used becomes null (reported).
bool Convert(const domCamera& rCamera, CCameraPtr& rspCamera)
{
    const char* szName = FirstText({rCamera.getId(), rCamera.getName()});
    CValues objValues(szName);
    const domCamera::domOptics* pOptics = rCamera.getOptics();
    const auto* pTechnique =
        pOptics != nullptr
            ? static_cast<const domCamera::domOptics::domTechnique_common*>(pOptics->getTechnique_common())
            : nullptr;
    CCameraPtr spCamera;
    if (pTechnique != nullptr && pTechnique->getPerspective() != nullptr)
    {
        spCamera = Convert(objValues, szName, *pTechnique->getPerspective());
    }
    else if (pTechnique != nullptr && pTechnique->getOrthographic() != nullptr)
    {
        spCamera = Convert(objValues, szName, *pTechnique->getOrthographic());
    }
    else
    {
        objValues.Lack("<perspective> or <orthographic>");
    }
    if (objValues.IsGood())
    {
        rspCamera = spCamera;
        return spCamera != nullptr;
    }
    return true;
}

bool AddCamera(CSGNode& rSGNode, const CCameraPtr& rspCamera)
{
    const auto spData = CSGData_Camera::Create(rspCamera);
    return spData && rSGNode.AddData(spData.get());
}

} // namespace

bool CColladaCameras::LoadLibraries(domCOLLADA& rRoot)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_cameras_array()))
    {
        for (const auto& rspCamera : AsSpan(rspLibrary->getCamera_array()))
        {
            if (!Convert(*rspCamera, m_mapCameras[rspCamera]))
            {
                return false;
            }
        }
    }
    return true;
}

bool CColladaCameras::AddToNode(domNode& rNode, CSGNode& rSGNode) const
{
    std::vector<std::pair<const domCamera*, CCameraPtr>> vecCameras;
    for (const auto& rspInstance : AsSpan(rNode.getInstance_camera_array()))
    {
        const auto* pCamera = CColladaInstance::GetTarget<domCamera>(*rspInstance);
        if (const auto it = m_mapCameras.find(pCamera); it != m_mapCameras.end() && it->second)
        {
            vecCameras.emplace_back(pCamera, it->second);
        }
    }
    if (vecCameras.size() == 1)
    {
        return AddCamera(rSGNode, vecCameras.front().second);
    }
    for (const auto& [pCamera, spCamera] : vecCameras)
    {
        const daeString szID = pCamera->getId();
        const daeString szName = pCamera->getName();
        const auto spChild =
            CSGNode::Create(CColladaInstance::JoinNames(rSGNode.GetGlobalName(), FirstText({szID, szName})),
                            CColladaInstance::JoinNames(rSGNode.GetLocalName(), FirstText({szName, szID})));
        if (!spChild || !AddCamera(*spChild, spCamera) || !rSGNode.AddChild(spChild.get()))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add node for <camera id=\"%s\"> as child of node %s",
                Text(szID), rSGNode.GetGlobalName());
            return false;
        }
    }
    return true;
}
