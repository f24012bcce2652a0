#include "qdscenegraph/texture/CSGTexture.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"

namespace
{
const SGStreamableRegistration<CSGTexture> s_objRegistration(0x925DCA8A83C65C9D, 1, 2);
}

bool CSGTexture::InstanceOf(const CSGTypeInfo<CSGTexture>* pType) const
{
    if (pType == nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Handed in NULL type object.");
        return false;
    }
    return GetTypeInfo() == pType;
}

bool CSGTexture::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    const int32_t nVersion = pLoadState->GetVersionToRead<CSGTexture>();
    if (nVersion == 1)
    {
        QD_CHECK(pStream->CanRead(2, sizeof(int32_t)), false);
        m_bAutoGenMipMapLevels = pStream->ReadInt32() != 0;
    }
    else if (nVersion == 2)
    {
        QD_CHECK(pStream->CanRead(1 + sizeof(int32_t), 1), false);
        uint8_t uiAutoGen = 0;
        pStream->Read(&uiAutoGen, 1);
        m_bAutoGenMipMapLevels = uiAutoGen != 0;
    }
    else
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unexpected version %d of CSGTexture.", nVersion);
        return false;
    }
    m_eChangeFrequency = static_cast<EChangeFrequency>(pStream->ReadInt32());
    return true;
}

bool CSGTexture::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    const uint8_t uiAutoGen = m_bAutoGenMipMapLevels ? 1 : 0;
    pStream->Write(&uiAutoGen, 1);
    pStream->WriteInt32(m_eChangeFrequency);
    return true;
}

void CSGTexture::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%s%s (%d): 0x%08llX - Change Freq: %d - Has Changed: %d", rIndent,
        GetTypeInfo()->GetName(), GetTypeInfo()->GetTypeID(), LogAddress(this), m_eChangeFrequency,
        m_bHasChanged);
}
