#include "qdscenegraph/texture/CSGTextureFromPool.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/texture/CSGTexturePool.h"

CSGTypeInfo<CSGTexture> CSGTextureFromPool::ms_objTypeInfo(CSGTextureFromPool::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGTextureFromPool> s_objRegistration(0x030C1E7CA48F1C64, 1, 1);
}

CSGTextureFromPoolPtr CSGTextureFromPool::Create(const CQDString& rPoolName, const CQDString& rTextureName)
{
    CSGTextureFromPoolPtr spTexture = CSGMem::Construct<CSGTextureFromPool>();
    QD_CHECK_CREATED(spTexture, nullptr);
    spTexture->m_strPoolName = rPoolName;
    spTexture->m_strTextureName = rTextureName;
    return spTexture;
}

CSGTexture* CSGTextureFromPool::GetOrLoadSharedTexture(CSGTextureLoader* pTextureLoader,
                                                       CSGTexturePool* pTexturePool)
{
    if (!m_spTexture)
    {
        QD_CHECK_ARG(pTexturePool, nullptr);
        m_spTexture = pTexturePool->GetOrLoadTexture(pTextureLoader, m_strTextureName);
    }
    return m_spTexture.get();
}

bool CSGTextureFromPool::Reload(CSGTextureLoader* pTextureLoader)
{
    if (m_spTexture)
    {
        return m_spTexture->Reload(pTextureLoader);
    }
    return GetOrLoadSharedTexture(pTextureLoader, CSGTexturePool::FindPool(m_strPoolName).get()) != nullptr;
}

CSGTextureLayout CSGTextureFromPool::GetLayout() const
{
    QD_CHECK_NOT_NULL(m_spTexture, {});
    return m_spTexture->GetLayout();
}

PixelFormat CSGTextureFromPool::GetFormat() const
{
    QD_CHECK_NOT_NULL(m_spTexture, PIXEL_FORMAT_NONE);
    return m_spTexture->GetFormat();
}

const uint8_t* CSGTextureFromPool::GetDataPtr() const
{
    QD_CHECK_NOT_NULL(m_spTexture, nullptr);
    return m_spTexture->GetDataPtr();
}

int32_t CSGTextureFromPool::GetTotalSize() const
{
    QD_CHECK_NOT_NULL(m_spTexture, 0);
    return m_spTexture->GetTotalSize();
}

int32_t CSGTextureFromPool::GetNumLevels() const
{
    QD_CHECK_NOT_NULL(m_spTexture, 0);
    return m_spTexture->GetNumLevels();
}

int32_t CSGTextureFromPool::GetLevelSize(int32_t nLevel) const
{
    QD_CHECK_NOT_NULL(m_spTexture, 0);
    return m_spTexture->GetLevelSize(nLevel);
}

const uint8_t* CSGTextureFromPool::GetLevelDataPtr(int32_t nLevel) const
{
    QD_CHECK_NOT_NULL(m_spTexture, nullptr);
    return m_spTexture->GetLevelDataPtr(nLevel);
}

CRefObject* CSGTextureFromPool::GetRendererData() const
{
    QD_CHECK_NOT_NULL(m_spTexture, nullptr);
    return m_spTexture->GetRendererData();
}

void CSGTextureFromPool::SetRendererData(const boost::intrusive_ptr<CRefObject>& spRendererData)
{
    QD_CHECK_NOT_NULL(m_spTexture, );
    m_spTexture->SetRendererData(spRendererData);
}

bool CSGTextureFromPool::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_CALL(pStream->ReadString(m_strPoolName), false);
    QD_CHECK_CALL(pStream->ReadString(m_strTextureName), false);
    return true;
}

bool CSGTextureFromPool::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    pStream->WriteString(m_strPoolName);
    pStream->WriteString(m_strTextureName);
    return true;
}

bool CSGTextureFromPool::PostRead(CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pLoadState, false);
    const boost::intrusive_ptr<CSGTexturePool> spTexturePool = CSGTexturePool::FindPool(m_strPoolName);
    if (!spTexturePool)
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "There is no texture pool '%s' for the texture '%s'.", m_strPoolName,
            m_strTextureName);
        return true;
    }
    // The pool says what it does not have.
    GetOrLoadSharedTexture(pLoadState->GetTextureLoader(), spTexturePool.get());
    return true;
}

void CSGTextureFromPool::OutputDebugInfo(const CQDString& rIndent) const
{
    CSGTexture::OutputDebugInfo(rIndent);
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Pool '%s' Name '%s'", rIndent, m_strPoolName, m_strTextureName);
}
