#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"

#include "qdscenegraph/streaming/CSGLoadedLinks.h"

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
    return ReadLinks(m_vecBindings, pStream, pLoadState, this);
}

bool CSGData_SkinBindingSet::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    return WriteLinks(m_vecBindings, pStream, pSaveState);
}

bool CSGData_SkinBindingSet::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                                                CSGStreamableLoadState*)
{
    return SetLoadedLink(m_vecBindings, nCookie, pChild);
}

bool CSGData_SkinBindingSet::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGData::PreWrite(pSaveState), false);
    return PreWriteLinks(m_vecBindings, pSaveState);
}

bool CSGData_SkinBindingSet::PostRead(CSGStreamableLoadState*) { return HasAllLinks(m_vecBindings); }

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
