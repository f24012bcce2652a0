#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <algorithm>

[[gnu::init_priority(CSGDataTypeInfo::ORDER_SKIN_BINDING_SET)]] CSGDataTypeInfo CSGData_SkinBindingSet::
    ms_objDataTypeInfo(CSGData_SkinBindingSet::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_SkinBindingSet> s_objRegistration(0xA9CFAA2DD1AE9098, 1, 1);
}

boost::intrusive_ptr<CSGData_SkinBindingSet> CSGData_SkinBindingSet::Create()
{
    return CSGMem::Construct<CSGData_SkinBindingSet>();
}

bool CSGData_SkinBindingSet::AddBinding(const boost::intrusive_ptr<CSGSkinBinding>& spBinding)
{
    QD_CHECK_ARG(spBinding, false);
    QD_CHECK(FindBinding(spBinding->GetGeomBinding()) == 0, false);
    m_vecBindings.push_back(spBinding);
    return true;
}

bool CSGData_SkinBindingSet::ReplaceBinding(int32_t nBinding,
                                            const boost::intrusive_ptr<CSGSkinBinding>& spBinding)
{
    QD_CHECK_ARG(spBinding, false);
    const CSGSkinBinding* pReplaced = GetBinding(nBinding);
    QD_CHECK_NOT_NULL(pReplaced, false);
    QD_CHECK(pReplaced->GetGeomBinding() == spBinding->GetGeomBinding(), false);
    m_vecBindings[static_cast<size_t>(nBinding)] = spBinding;
    m_objBounds = CSGSkinBounds();
    return true;
}

CSGSkinBinding* CSGData_SkinBindingSet::GetBinding(int32_t nBinding) const
{
    return nBinding >= 0 && nBinding < GetNumBindings() ? m_vecBindings[static_cast<size_t>(nBinding)].get()
                                                        : nullptr;
}

CSGSkinBinding* CSGData_SkinBindingSet::FindBinding(const CSGGeomBinding* pGeomBinding) const
{
    const auto it = std::ranges::find_if(
        m_vecBindings, [&](const auto& spBinding) { return spBinding->GetGeomBinding() == pGeomBinding; });
    return it != m_vecBindings.end() ? it->get() : nullptr;
}

boost::intrusive_ptr<CSGData> CSGData_SkinBindingSet::CreateCopy(CSGCopyData*) const
{
    boost::intrusive_ptr<CSGData_SkinBindingSet> spCopy = Create();
    QD_CHECK_CREATED(spCopy, nullptr);
    for (const auto& spBinding : m_vecBindings)
    {
        const boost::intrusive_ptr<CSGSkinBinding> spBindingCopy = spBinding->CreateCopy();
        QD_CHECK_CREATED(spBindingCopy, nullptr);
        spCopy->m_vecBindings.push_back(spBindingCopy);
    }
    return spCopy;
}

bool CSGData_SkinBindingSet::PostCopy(CSGCopyData* pCopyData)
{
    QD_CHECK_ARG(pCopyData, false);
    for (const auto& spBinding : m_vecBindings)
    {
        spBinding->RebindToCopies(*pCopyData);
    }
    return true;
}

const CSGBounds* CSGData_SkinBindingSet::GetDeformedBounds(CSGNode* pNode) const
{
    QD_CHECK_ARG(pNode, nullptr);
    return m_objBounds.Get(pNode, *this);
}

bool CSGData_SkinBindingSet::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nBindings = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nBindings, sizeof(int32_t)), false);
    m_vecBindings.resize(static_cast<size_t>(nBindings));
    for (int32_t nBinding = 0; nBinding < nBindings; ++nBinding)
    {
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, nBinding), false);
    }
    return true;
}

bool CSGData_SkinBindingSet::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteInt32(GetNumBindings());
    for (const auto& spBinding : m_vecBindings)
    {
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, spBinding.get()), false);
    }
    return true;
}

bool CSGData_SkinBindingSet::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                                                CSGStreamableLoadState*)
{
    QD_CHECK(nCookie >= 0 && nCookie < GetNumBindings(), false);
    return SetLoadedLink(m_vecBindings[static_cast<size_t>(nCookie)], pChild);
}

bool CSGData_SkinBindingSet::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGData::PreWrite(pSaveState), false);
    for (const auto& spBinding : m_vecBindings)
    {
        QD_CHECK_CALL(spBinding->PreWrite(pSaveState), false);
    }
    return true;
}

bool CSGData_SkinBindingSet::PostRead(CSGStreamableLoadState*)
{
    for (const auto& spBinding : m_vecBindings)
    {
        QD_CHECK_NOT_NULL(spBinding, false);
    }
    return true;
}

void CSGData_SkinBindingSet::DropLinks() { m_vecBindings.clear(); }

void CSGData_SkinBindingSet::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_SkinBindingSet: 0x%08llX - Bindings: %d", rIndent,
        LogAddress(this), GetNumBindings());
    for (const auto& spBinding : m_vecBindings)
    {
        spBinding->OutputDebugInfo(rIndent + "    ");
    }
}
