#include "qdscenegraph/material/CSGSampler.h"

#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <cstdio>

const CSGTypeInfo<CSGSampler> CSGSampler::ms_objTypeInfo(CSGSampler::SG_TYPE_NAME);

namespace
{

const SGStreamableRegistration<CSGSampler> s_objRegistration(0xE0F775D3C4258D81, 1, 1);

// The one link of the record.
constexpr int32_t COOKIE_SURFACE = 0;

CQDString ToText(const CColor& rColor)
{
    char arrText[256];
    std::snprintf(arrText, sizeof(arrText), "[%.3f %.3f %.3f %.3f]", static_cast<double>(rColor.r),
                  static_cast<double>(rColor.g), static_cast<double>(rColor.b),
                  static_cast<double>(rColor.a));
    return arrText;
}

} // namespace

CSGSamplerPtr CSGSampler::Create(const CSGSurfacePtr& spObjSurface)
{
    QD_CHECK_ARG(spObjSurface, nullptr);
    CSGSamplerPtr spSampler = CSGMem::Construct<CSGSampler>();
    if (spSampler)
    {
        spSampler->m_spObjSurface = spObjSurface;
    }
    return spSampler;
}

bool CSGSampler::SetSurface(const CSGSurfacePtr& spObjSurface)
{
    QD_CHECK_ARG(spObjSurface, false);
    m_spObjSurface = spObjSurface;
    return true;
}

CSGTextureLayout CSGSampler::GetLayout() const
{
    if (!m_spObjSurface)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL surface.");
        return {};
    }
    return m_spObjSurface->GetLayout();
}

CSGTexture::EChangeFrequency CSGSampler::GetChangeFrequency() const
{
    if (!m_spObjSurface)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL surface.");
        return CSGTexture::CHANGE_FREQ_NEVER;
    }
    return m_spObjSurface->GetChangeFrequency();
}

bool CSGSampler::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_OR_RETURN(pLoadState->ReadChildID(pStream, this, COOKIE_SURFACE), "Call %s failed",
                       "pLoadState->ReadChildID(pStream,this,0)", false);
    QD_CHECK_CALL(m_objParams.ReadFromStream(pStream), false);
    return true;
}

bool CSGSampler::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, m_spObjSurface.get()), "Call %s failed",
                       "pSaveState->WriteChildID(pStream,m_spObjSurface.get())", false);
    QD_CHECK_CALL(m_objParams.WriteToStream(pStream), false);
    return true;
}

bool CSGSampler::NotifyObjectLoaded(int32_t, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    auto* pSurface = SGStreamableCast<CSGSurface>(pChild);
    QD_CHECK_NOT_NULL(pSurface, false);
    m_spObjSurface = pSurface;
    return true;
}

bool CSGSampler::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    if (m_spObjSurface)
    {
        QD_CHECK_CALL(m_spObjSurface->PreWrite(pSaveState), false);
    }
    return true;
}

void CSGSampler::DropLinks() { m_spObjSurface.reset(); }

void CSGSampler::OutputDebugInfo(const CQDString& rIndent) const
{
    const CSGSamplerParams& r = m_objParams;
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sCSGSampler 0x%08llX - Wraps [S: %d T: %d P: %d] - Filters [Min: %d Mag: %d Mip: %d] - "
        "Border Color: %s - Max Mip Map Level: %d - Mip Map Bias: %.3f",
        rIndent, LogAddress(this), r.m_eWrapS, r.m_eWrapT, r.m_eWrapP, r.m_eMinFilter, r.m_eMagFilter,
        r.m_eMipFilter, ToText(r.m_objBorderColor), r.m_nMaxMipMapLevel, r.m_fMipMapBias);
    if (m_spObjSurface)
    {
        m_spObjSurface->OutputDebugInfo(rIndent + "  ");
    }
}
