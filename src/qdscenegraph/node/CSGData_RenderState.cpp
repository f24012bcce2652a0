#include "qdscenegraph/node/CSGData_RenderState.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"

#include <algorithm>

[[gnu::init_priority(CSGDataTypeInfo::ORDER_RENDER_STATE)]] CSGDataTypeInfo CSGData_RenderState::
    ms_objDataTypeInfo(CSGData_RenderState::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_RenderState> s_objRegistration(0x10CC64D588311295, 1, 2);
}

boost::intrusive_ptr<CSGData_RenderState> CSGData_RenderState::GetOrCreateFromNode(CSGNode* pNode)
{
    QD_CHECK_ARG(pNode, nullptr);
    if (auto* pData = pNode->FindData<CSGData_RenderState>())
    {
        return pData;
    }
    boost::intrusive_ptr<CSGData_RenderState> spNewData = CSGMem::Construct<CSGData_RenderState>();
    QD_CHECK_CREATED(spNewData, nullptr);
    QD_CHECK_OR_RETURN(pNode->AddData(spNewData.get()), "Call %s failed", "pNode->AddData(spNewData)",
                       nullptr);
    return spNewData;
}

boost::intrusive_ptr<CSGData> CSGData_RenderState::CreateCopy(CSGCopyData*) const
{
    boost::intrusive_ptr<CSGData_RenderState> spCopy = CSGMem::Construct<CSGData_RenderState>();
    if (spCopy)
    {
        std::ranges::copy(m_arrWords, spCopy->m_arrWords);
    }
    return spCopy;
}

bool CSGData_RenderState::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    // Version 1 had the first word alone.
    const bool bBothWords = pLoadState->GetVersionToRead<CSGData_RenderState>() >= 2;
    QD_CHECK(pStream->CanRead(bBothWords ? 2 : 1, sizeof(uint32_t)), false);
    m_arrWords[0] = pStream->ReadUInt32();
    m_arrWords[1] = bBothWords ? pStream->ReadUInt32() : 0;
    return true;
}

bool CSGData_RenderState::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    pStream->WriteUInt32(m_arrWords[0]);
    pStream->WriteUInt32(m_arrWords[1]);
    return true;
}

void CSGData_RenderState::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_RenderState: 0x%08llX - Flags: 0x%08X - Depth Bias: %.3f",
        rIndent, LogAddress(this), m_arrWords[0], GetDepthBias());
}
