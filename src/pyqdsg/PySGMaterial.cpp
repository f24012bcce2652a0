#include "pyqdsg/PySGMaterial.h"

#include "pyqdsg/PyDict.h"
#include "qdscenegraph/material/CSGMaterial.h"
#include "qdscenegraph/material/CSGSampler.h"
#include "qdscenegraph/material/CSGSurf_Texture.h"

namespace
{

const char* GetTransparentModeName(int32_t eTransparentMode)
{
    switch (eTransparentMode)
    {
    case CSGMaterial::TRANSPARENT_RGB_ZERO:
        return "RGB_ZERO";
    case CSGMaterial::TRANSPARENT_A_ONE:
        return "A_ONE";
    default:
        return "UNKNOWN";
    }
}

std::string_view GetTextureName(const CSGSampler& rSampler)
{
    const CSGSurface* pSurface = rSampler.GetSurface();
    const CSGTexture* pTexture = pSurface != nullptr && pSurface->InstanceOf(&CSGSurf_Texture::ms_objTypeInfo)
                                     ? static_cast<const CSGSurf_Texture*>(pSurface)->GetTexture()
                                     : nullptr;
    return pTexture != nullptr ? std::string_view(pTexture->GetSourceName()) : std::string_view();
}

PyRef CreateTexture(const CSGSampler& rSampler, int32_t nTexCoordSet)
{
    const CSGSamplerParams& rParams = rSampler.GetParams();
    CPyDict objDict;
    objDict.Add("texture", GetTextureName(rSampler));
    objDict.Add("set", nTexCoordSet);
    objDict.Add("wrap", PyRef(Py_BuildValue("(ss)", CSGSamplerParams::GetWrapName(rParams.m_eWrapS),
                                            CSGSamplerParams::GetWrapName(rParams.m_eWrapT))));
    objDict.Add("filter", PyRef(Py_BuildValue("(sss)", CSGSamplerParams::GetFilterName(rParams.m_eMinFilter),
                                              CSGSamplerParams::GetFilterName(rParams.m_eMagFilter),
                                              CSGSamplerParams::GetFilterName(rParams.m_eMipFilter))));
    return PyRef(objDict.Release());
}

} // namespace

PyObject* PySGMaterial_create(const CSGMaterial& rMaterial)
{
    CPyDict objDict;
    objDict.Add("name", rMaterial.GetGlobalName().GetView());
    for (int32_t nParam = 0; nParam < CSGMaterial::PARAM_COUNT; ++nParam)
    {
        const auto eParam = static_cast<CSGMaterial::EParam>(nParam);
        const char* szName = CSGMaterial::GetParamName(eParam);
        if (const CSGSampler* pSampler = rMaterial.GetSampler(eParam))
        {
            objDict.Add(szName, CreateTexture(*pSampler, rMaterial.GetTexCoordSet(eParam)));
        }
        else if (rMaterial.HasFloatValue(eParam))
        {
            objDict.Add(szName, rMaterial.GetFloatValue(eParam));
        }
        else if (rMaterial.HasColorValue(eParam))
        {
            const CSGFloat4 objColor = rMaterial.GetColorValue(eParam);
            const float arrColor[] = {objColor.x, objColor.y, objColor.z, objColor.w};
            objDict.Add(szName, arrColor);
        }
        else
        {
            Py_INCREF(Py_None);
            objDict.Add(szName, PyRef(Py_None));
        }
    }
    objDict.Add("transparent_mode", std::string_view(GetTransparentModeName(rMaterial.GetTransparentMode())));
    objDict.Add("total_transparency", rMaterial.GetTotalTransparency());
    return objDict.Release();
}
