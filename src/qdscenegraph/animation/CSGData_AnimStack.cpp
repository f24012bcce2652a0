#include "qdscenegraph/animation/CSGData_AnimStack.h"

#include "qdscenegraph/streaming/CSGLoadedLinks.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_ANIM_STACK)]] CSGDataTypeInfo CSGData_AnimStack::
    ms_objDataTypeInfo(CSGData_AnimStack::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_AnimStack> s_objRegistration(0xA5C690464008414C, 1, 1);
}

boost::intrusive_ptr<CSGData_AnimStack> CSGData_AnimStack::Create()
{
    return CSGMem::Construct<CSGData_AnimStack>();
}

bool CSGData_AnimStack::AddLayer(const CSGAnimLayerPtr& spLayer)
{
    QD_CHECK_ARG(spLayer, false);
    m_vecLayers.push_back(spLayer);
    return true;
}

CSGAnimLayer* CSGData_AnimStack::GetLayer(int32_t nLayer) const
{
    return nLayer >= 0 && nLayer < GetNumLayers() ? m_vecLayers[static_cast<size_t>(nLayer)].get() : nullptr;
}

CSGAnimLayer* CSGData_AnimStack::FindLayer(const CQDCompactString& rName) const
{
    for (const CSGAnimLayerPtr& spLayer : m_vecLayers)
    {
        if (spLayer->GetName() == rName)
        {
            return spLayer.get();
        }
    }
    return nullptr;
}

boost::intrusive_ptr<CSGData> CSGData_AnimStack::CreateCopy(CSGCopyData*) const
{
    const auto spCopy = Create();
    QD_CHECK_CREATED(spCopy, nullptr);
    for (const CSGAnimLayerPtr& spLayer : m_vecLayers)
    {
        QD_CHECK_CALL(spCopy->AddLayer(spLayer->CreateCopy()), nullptr);
    }
    return spCopy;
}

bool CSGData_AnimStack::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    return ReadLinks(m_vecLayers, pStream, pLoadState, this);
}

bool CSGData_AnimStack::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    return WriteLinks(m_vecLayers, pStream, pSaveState);
}

bool CSGData_AnimStack::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGData::PreWrite(pSaveState), false);
    return PreWriteLinks(m_vecLayers, pSaveState);
}

bool CSGData_AnimStack::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    return SetLoadedLink(m_vecLayers, nCookie, pChild);
}

bool CSGData_AnimStack::PostRead(CSGStreamableLoadState*) { return HasAllLinks(m_vecLayers); }

void CSGData_AnimStack::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_AnimStack: 0x%08llX - Layers: %d", rIndent, LogAddress(this),
        GetNumLayers());
    for (const CSGAnimLayerPtr& spLayer : m_vecLayers)
    {
        spLayer->OutputDebugInfo(rIndent + "    ");
    }
}
