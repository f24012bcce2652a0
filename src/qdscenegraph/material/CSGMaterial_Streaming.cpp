// Saving and loading of materials.

#include "qdcommon/CStream.h"
#include "qdscenegraph/material/CSGMaterial.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

namespace
{

// Version 1 had a byte for "alpha blending" in place of the flags; version 3 brought the normal map.
constexpr int32_t VERSION_FLAGS = 2;
constexpr int32_t VERSION_NORMAL_MAP = 3;

const SGStreamableRegistration<CSGMaterial> s_objRegistration(0x6FEA577CEF6E6DA5, 1, VERSION_NORMAL_MAP);

} // namespace

bool CSGMaterial::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    const int32_t nVersion = pLoadState->GetVersionToRead<CSGMaterial>();
    pStream->ReadString(m_strGlobalName);
    bool bParamsRead = true;
    for (int32_t nParamIndex = 0; nParamIndex < PARAM_COUNT; ++nParamIndex)
    {
        int32_t& rTexCoordSet = m_arrTexCoordSets[static_cast<size_t>(nParamIndex)];
        if (nParamIndex == PARAM_NORMALMAP && nVersion < VERSION_NORMAL_MAP)
        {
            rTexCoordSet = -1;
            continue;
        }
        bParamsRead = pLoadState->ReadChildID(pStream, this, nParamIndex);
        if (!bParamsRead)
        {
            QD_CHECK_FAILED("Call %s failed", "pLoadState->ReadChildID(pStream, this, nParamIndex)");
            break;
        }
        rTexCoordSet = pStream->ReadInt32();
    }
    if (nVersion < VERSION_FLAGS)
    {
        QD_CHECK(pStream->CanRead(1, sizeof(int32_t) + sizeof(uint8_t)), false);
        m_eTransparentMode = pStream->ReadInt32();
        uint8_t uiAlphaBlend = 0;
        pStream->Read(&uiAlphaBlend, sizeof(uiAlphaBlend));
        m_nMaterialFlags = uiAlphaBlend != 0 ? FLAG_ALPHA_BLEND : 0;
    }
    else
    {
        QD_CHECK(pStream->CanRead(2, sizeof(int32_t)), false);
        m_eTransparentMode = pStream->ReadInt32();
        m_nMaterialFlags = pStream->ReadInt32();
    }
    return bParamsRead;
}

bool CSGMaterial::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteString(m_strGlobalName);
    for (size_t nParamIndex = 0; nParamIndex < m_arrParams.size(); ++nParamIndex)
    {
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, m_arrParams[nParamIndex].get()), false);
        pStream->WriteInt32(m_arrTexCoordSets[nParamIndex]);
    }
    pStream->WriteInt32(m_eTransparentMode);
    pStream->WriteInt32(m_nMaterialFlags);
    return true;
}

bool CSGMaterial::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    QD_CHECK_OR_RETURN(nCookie >= 0 && nCookie < PARAM_COUNT, "%s is false",
                       "(nCookie>=0) && (nCookie < PARAM_COUNT)", false);
    auto* pParam = SGStreamableCast<CSGParam>(pChild);
    QD_CHECK_NOT_NULL(pParam, false);
    m_arrParams[static_cast<size_t>(nCookie)] = pParam;
    return true;
}

bool CSGMaterial::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "Cycle detected at (CSGMaterial*)0x%08llx", LogAddress(this));
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    for (const CSGParamPtr& pParam : m_arrParams)
    {
        if (pParam)
        {
            QD_CHECK_CALL(pParam->PreWrite(pSaveState), false);
        }
    }
    return true;
}

void CSGMaterial::DropLinks() { m_arrParams = {}; }
