#include "pyqdsg/PySGCamera.h"

#include "pyqdsg/PyDict.h"
#include "qdscenegraph/camera/CSGCam_OrthoYMag.h"
#include "qdscenegraph/camera/CSGCam_PerspYFOV.h"

PyObject* PySGCamera_create(const CSGCamera& rCamera)
{
    CPyDict objDict;
    objDict.Add("name", rCamera.GetName().GetView());
    if (rCamera.GetTypeInfo() == &CSGCam_OrthoYMag::ms_objTypeInfo)
    {
        objDict.Add("kind", std::string_view("orthographic"));
        objDict.Add("ymag", static_cast<const CSGCam_OrthoYMag&>(rCamera).GetYMag());
    }
    else
    {
        objDict.Add("kind", std::string_view("perspective"));
        objDict.Add("yfov", static_cast<const CSGCam_PerspYFOV&>(rCamera).GetYFOV());
    }
    objDict.Add("aspect_ratio", rCamera.GetAspectRatio());
    objDict.Add("near", rCamera.GetNear());
    objDict.Add("far", rCamera.GetFar());
    return objDict.Release();
}
