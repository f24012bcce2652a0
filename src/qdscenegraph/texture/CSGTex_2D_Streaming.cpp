// Two-dimensional textures in files.
#include "qdscenegraph/texture/CSGTex_2D.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"

namespace
{
const SGStreamableRegistration<CSGTex_2D> s_objRegistration(0x6D8339ED2D3CE725, 1, 1);
}

bool CSGTex_2D::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_OR_RETURN(CSGTexture::ReadFromStream(pStream, pLoadState), "Call %s failed",
                       "CSGTexture::ReadFromStream(pStream,pLoadState)", false);
    QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, COOKIE_BUFFER), false);
    QD_CHECK(pStream->CanRead(3, sizeof(int32_t)), false);
    const int32_t nWidth = pStream->ReadInt32();
    const int32_t nHeight = pStream->ReadInt32();
    const int32_t nLevels = pStream->ReadInt32();
    return SetLayout(nWidth, nHeight, nLevels);
}

bool CSGTex_2D::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_OR_RETURN(CSGTexture::WriteToStream(pStream, pSaveState), "Call %s failed",
                       "CSGTexture::WriteToStream(pStream,pSaveState)", false);
    QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, m_spBuffer.get()), "Call %s failed",
                       "pSaveState->WriteChildID(pStream,m_spBuffer.get())", false);
    pStream->WriteInt32(m_uiWidth);
    pStream->WriteInt32(m_uiHeight);
    pStream->WriteInt32(m_nNumLevels);
    return true;
}

bool CSGTex_2D::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState* pLoadState)
{
    if (nCookie != COOKIE_BUFFER)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    QD_CHECK_ARG(pLoadState, false);
    auto* pPixelBuffer = SGStreamableCast<CSGPixelBuffer>(pChild);
    QD_CHECK_NOT_NULL(pPixelBuffer, false);
    QD_CHECK(m_spBuffer == 0, false);
    CSGPixelBufferPtr spBuffer = pPixelBuffer;
    if (const CSGTextureLoader* pTextureLoader = pLoadState->GetTextureLoader())
    {
        spBuffer =
            CSGPixelBuffer::ConvertToSupportedFormat(pPixelBuffer, pTextureLoader->GetSupportedFormatBits());
        QD_CHECK_NOT_NULL(spBuffer, false);
    }
    TakeBuffer(spBuffer);
    return true;
}

bool CSGTex_2D::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTexture::PreWrite(pSaveState), false);
    QD_CHECK_NOT_NULL(m_spBuffer, false);
    QD_CHECK_CALL(m_spBuffer->PreWrite(pSaveState), false);
    return true;
}

// Only now are the buffer and the layout both there, whichever came first.
bool CSGTex_2D::PostRead(CSGStreamableLoadState*) { return VerifyBuffer(); }
