#include "qdscenegraph/light/CSGData_RenderEnv.h"

#include "qdscenegraph/streaming/CSGFloatRecord.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <algorithm>

[[gnu::init_priority(CSGDataTypeInfo::ORDER_RENDER_ENV)]] CSGDataTypeInfo CSGData_RenderEnv::
    ms_objDataTypeInfo(CSGData_RenderEnv::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_RenderEnv> s_objRegistration(0xB38A767E56DFC48D, 1, 1);
}

boost::intrusive_ptr<CSGData_RenderEnv> CSGData_RenderEnv::Create()
{
    return CSGMem::Construct<CSGData_RenderEnv>();
}

bool CSGData_RenderEnv::AddParam(const CQDCompactString& rName, const CParamPtr& spParam)
{
    QD_CHECK_ARG(spParam, false);
    if (FindParam(rName) != nullptr)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Already had param named '%s'", rName);
        return false;
    }
    m_vecParams.push_back({rName, spParam});
    return true;
}

CSGParam* CSGData_RenderEnv::FindParam(const CQDCompactString& rName) const
{
    const auto it = std::ranges::find(m_vecParams, rName, &CEntry::strName);
    return it != m_vecParams.end() ? it->spParam.get() : nullptr;
}

boost::intrusive_ptr<CSGData> CSGData_RenderEnv::CreateCopy(CSGCopyData*) const
{
    boost::intrusive_ptr<CSGData_RenderEnv> spCopy = Create();
    QD_CHECK_CREATED(spCopy, nullptr);
    spCopy->m_objBackgroundColor = m_objBackgroundColor;
    for (const CEntry& rEntry : m_vecParams)
    {
        const CParamPtr spParam = rEntry.spParam->CreateCopy();
        QD_CHECK_CREATED(spParam, nullptr);
        spCopy->m_vecParams.push_back({rEntry.strName, spParam});
    }
    return spCopy;
}

bool CSGData_RenderEnv::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    if (!ReadFloats(pStream, m_objBackgroundColor))
    {
        return false;
    }
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nParams = pStream->ReadInt32();
    // At least the count of a name's characters and the id of a parameter.
    QD_CHECK(pStream->CanRead(nParams, sizeof(uint32_t) + sizeof(int32_t)), false);
    m_vecParams.resize(static_cast<size_t>(nParams));
    for (int32_t nParam = 0; nParam < nParams; ++nParam)
    {
        pStream->ReadString(m_vecParams[static_cast<size_t>(nParam)].strName);
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, nParam), false);
    }
    return true;
}

bool CSGData_RenderEnv::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    if (!WriteFloats(pStream, m_objBackgroundColor))
    {
        return false;
    }
    pStream->WriteInt32(GetNumParams());
    for (const CEntry& rEntry : m_vecParams)
    {
        pStream->WriteString(rEntry.strName);
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, rEntry.spParam.get()), false);
    }
    return true;
}

bool CSGData_RenderEnv::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    QD_CHECK(nCookie >= 0 && nCookie < GetNumParams(), false);
    return SetLoadedLink(m_vecParams[static_cast<size_t>(nCookie)].spParam, pChild);
}

bool CSGData_RenderEnv::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGData::PreWrite(pSaveState), false);
    for (const CEntry& rEntry : m_vecParams)
    {
        QD_CHECK_CALL(rEntry.spParam->PreWrite(pSaveState), false);
    }
    return true;
}

bool CSGData_RenderEnv::PostRead(CSGStreamableLoadState*)
{
    for (const CEntry& rEntry : m_vecParams)
    {
        QD_CHECK_NOT_NULL(rEntry.spParam, false);
    }
    return true;
}

void CSGData_RenderEnv::DropLinks() { m_vecParams.clear(); }

void CSGData_RenderEnv::OutputDebugInfo(const CQDString& rIndent) const
{
    const CColor& c = m_objBackgroundColor;
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sCSGData_RenderEnv: 0x%08llX - Background: [%.3f %.3f %.3f %.3f] - Params: %d", rIndent,
        LogAddress(this), c.r, c.g, c.b, c.a, GetNumParams());
    for (const CEntry& rEntry : m_vecParams)
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%s    '%s':", rIndent, rEntry.strName);
        rEntry.spParam->OutputDebugInfo(rIndent + "      ");
    }
}
