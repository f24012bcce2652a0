#include "qdsgloader_collada/CColladaSurfaceConverter.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaConverter.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaImages.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"

namespace
{

const char* GetTypeName(domFx_surface_type_enum eType)
{
    switch (eType)
    {
    case FX_SURFACE_TYPE_ENUM_UNTYPED:
        return "UNTYPED";
    case FX_SURFACE_TYPE_ENUM_1D:
        return "1D";
    case FX_SURFACE_TYPE_ENUM_2D:
        return "2D";
    case FX_SURFACE_TYPE_ENUM_3D:
        return "3D";
    case FX_SURFACE_TYPE_ENUM_RECT:
        return "RECT";
    case FX_SURFACE_TYPE_ENUM_CUBE:
        return "CUBE";
    case FX_SURFACE_TYPE_ENUM_DEPTH:
        return "DEPTH";
    default:
        return "unknown";
    }
}

// The first child that asks for more than an image shown as it is; null when there is none.
const daeElement* FindUnsupported(const domFx_surface_common& rSurface)
{
    const domFx_surface_init_common* pInit = rSurface.getFx_surface_init_common();
    std::initializer_list<const daeElement*> arrElements = {
        pInit != nullptr ? pInit->getInit_as_null().cast() : nullptr,
        pInit != nullptr ? pInit->getInit_as_target().cast() : nullptr,
        pInit != nullptr ? pInit->getInit_cube().cast() : nullptr,
        pInit != nullptr ? pInit->getInit_volume().cast() : nullptr,
        pInit != nullptr ? pInit->getInit_planar().cast() : nullptr,
        rSurface.getSize(),
        rSurface.getViewport_ratio(),
        rSurface.getFormat_hint(),
    };
    for (const daeElement* pElement : arrElements)
    {
        if (pElement != nullptr)
        {
            return pElement;
        }
    }
    return nullptr;
}

// The image that a 2D surface is initialised from; null (reported) without exactly one.
domImage* FindImage(domFx_surface_common& rSurface)
{
    const domFx_surface_init_common* pInit = rSurface.getFx_surface_init_common();
    const size_t nCount = pInit != nullptr ? pInit->getInit_from_array().getCount() : 0;
    if (nCount == 0)
    {
        Log(QD_COLLADA, LOG_ERROR, "2D <surface> had no <init_from>");
        return nullptr;
    }
    if (nCount > 1)
    {
        Log(QD_COLLADA, LOG_ERROR, "2D <surface> had more than one <init_from>");
        return nullptr;
    }
    const char* szID = Text(pInit->getInit_from_array()[0]->getValue().getID());
    if (*szID == '\0')
    {
        Log(QD_COLLADA, LOG_ERROR, "2D <surface> had only 1 <init_from> and it was NULL.");
        return nullptr;
    }
    auto* pImage =
        static_cast<domImage*>(CSGLoaderCollada::GetIDElement(rSurface.getDAE(), szID, domImage::ID()));
    if (pImage == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<init_from> referenced a NULL <image>");
    }
    return pImage;
}

} // namespace

CSGSurfacePtr CColladaSurfaceConverter::LoadSurface(domFx_surface_common& rSurface, CColladaImages& rImages)
{
    if (rSurface.getType() != FX_SURFACE_TYPE_ENUM_2D)
    {
        Log(QD_COLLADA, LOG_ERROR, "Unsupported surface type \"%s\" in <surface>",
            GetTypeName(rSurface.getType()));
        return nullptr;
    }
    if (const daeElement* pElement = FindUnsupported(rSurface))
    {
        Log(QD_COLLADA, LOG_ERROR, "Unsupported <%s> in <surface>",
            const_cast<daeElement*>(pElement)->getElementName());
        return nullptr;
    }
    if (const domFx_surface_common::domFormat* pFormat = rSurface.getFormat())
    {
        // A wish only: the texture has the format of its file, and an unknown one is no reason to do without.
        CColladaConverter::GetPixelFormat(Text(pFormat->getValue()));
    }
    domImage* pImage = FindImage(rSurface);
    return pImage != nullptr ? rImages.GetSurface(*pImage) : nullptr;
}
