#include "qdscenegraph/material/CSGSurf_Texture.h"

#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

const CSGTypeInfo<CSGSurface> CSGSurf_Texture::ms_objTypeInfo(CSGSurf_Texture::SG_TYPE_NAME);

namespace
{

const SGStreamableRegistration<CSGSurf_Texture> s_objRegistration(0xFF1A940AA986AE29, 1, 1);

// The one link of the record.
constexpr int32_t COOKIE_TEXTURE = 0;

} // namespace

boost::intrusive_ptr<CSGSurf_Texture> CSGSurf_Texture::Create(const CSGTexturePtr& spObjTexture)
{
    QD_CHECK_ARG(spObjTexture, nullptr);
    boost::intrusive_ptr<CSGSurf_Texture> spSurface = CSGMem::Construct<CSGSurf_Texture>();
    if (spSurface)
    {
        spSurface->m_spObjTexture = spObjTexture;
    }
    return spSurface;
}

CSGTextureLayout CSGSurf_Texture::GetLayout() const
{
    if (!m_spObjTexture)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL texture.");
        return {};
    }
    return m_spObjTexture->GetLayout();
}

CSGTexture::EChangeFrequency CSGSurf_Texture::GetChangeFrequency() const
{
    if (!m_spObjTexture)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL texture.");
        return CSGTexture::CHANGE_FREQ_NEVER;
    }
    return m_spObjTexture->GetChangeFrequency();
}

bool CSGSurf_Texture::HasChanged() const
{
    if (!m_spObjTexture)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Had NULL texture.");
        return false;
    }
    return m_spObjTexture->HasChanged();
}

bool CSGSurf_Texture::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_OR_RETURN(pLoadState->ReadChildID(pStream, this, COOKIE_TEXTURE), "Call %s failed",
                       "pLoadState->ReadChildID(pStream,this,0)", false);
    return true;
}

bool CSGSurf_Texture::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, m_spObjTexture.get()), "Call %s failed",
                       "pSaveState->WriteChildID(pStream,m_spObjTexture.get())", false);
    return true;
}

bool CSGSurf_Texture::NotifyObjectLoaded(int32_t, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    auto* pTexture = SGStreamableCast<CSGTexture>(pChild);
    QD_CHECK_NOT_NULL(pTexture, false);
    m_spObjTexture = pTexture;
    return true;
}

bool CSGSurf_Texture::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "Cycle detected at (CSGSurf_Texture*)0x%08llx", LogAddress(this));
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    if (m_spObjTexture)
    {
        QD_CHECK_CALL(m_spObjTexture->PreWrite(pSaveState), false);
    }
    return true;
}

void CSGSurf_Texture::DropLinks() { m_spObjTexture.reset(); }

void CSGSurf_Texture::OutputDebugInfo(const CQDString& rIndent) const
{
    CSGSurface::OutputDebugInfo(rIndent);
    if (m_spObjTexture)
    {
        m_spObjTexture->OutputDebugInfo(rIndent + "  ");
    }
}
