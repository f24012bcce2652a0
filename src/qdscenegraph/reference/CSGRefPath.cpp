#include "qdscenegraph/reference/CSGRefPath.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/reference/CSGATFRef_Visibility.h"
#include "qdscenegraph/reference/CSGRefKind.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"
#include "qdscenegraph/transform/CSGData_LocalTransform.h"

namespace
{

const SGStreamableRegistration<CSGRefPath> s_objRegistration(0xE6A7E9871875BD32, 1, 1);

// The field of a reference that finds as FIND does, whichever base it has; null for another reference.
template <class FIND>
typename FIND::CField* FindField(CSGRef* pRef)
{
    if (auto* pPlain = SGStreamableCast<CSGRefKind<FIND, CSGRef>>(pRef))
    {
        return &pPlain->EditField();
    }
    auto* pAnimated = SGStreamableCast<CSGRefKind<FIND, CSGATFRef>>(pRef);
    return pAnimated != nullptr ? &pAnimated->EditField() : nullptr;
}

} // namespace

CSGRefPathPtr CSGRefPath::Create() { return CSGMem::Construct<CSGRefPath>(); }

CSGRefPathPtr CSGRefPath::Create(std::initializer_list<CSGRefPtr> arrRefs)
{
    CSGRefPathPtr spPath = Create();
    QD_CHECK_CREATED(spPath, nullptr);
    for (const CSGRefPtr& spRef : arrRefs)
    {
        QD_CHECK_CALL(spPath->AddRef(spRef), nullptr);
    }
    return spPath;
}

CSGRefPathPtr CSGRefPath::ForTransform(const CQDCompactString& rNodeGlobalName,
                                       const CQDCompactString& rTransformName, ETarget eTarget)
{
    return Create({CSGRef_DescendantNodeByGlobalName::Create(rNodeGlobalName),
                   CSGRef_DataByType::Create(CSGData_LocalTransform::SG_TYPE_NAME),
                   CSGRef_TransformByName::Create(rTransformName), CSGATFRef_Target::Create(eTarget)});
}

CSGRefPathPtr CSGRefPath::ForVisibility(const CQDCompactString& rNodeGlobalName)
{
    return Create(
        {CSGRef_DescendantNodeByGlobalName::Create(rNodeGlobalName), CSGATFRef_Visibility::Create()});
}

CSGRefPathPtr CSGRefPath::ForMaterialParam(const CQDCompactString& rMaterialGlobalName,
                                           CSGMaterial::EParam eParam, ETarget eTarget)
{
    return Create({CSGRef_MaterialByGlobalName::Create(rMaterialGlobalName),
                   CSGRef_MaterialParam::Create(eParam), CSGATFRef_Target::Create(eTarget)});
}

bool CSGRefPath::AddRef(const CSGRefPtr& spRef)
{
    QD_CHECK_ARG(spRef, false);
    QD_CHECK(GetNumRefs() < MAX_REFS, false);
    m_vecRefs.push_back(spRef);
    return true;
}

CSGRef* CSGRefPath::GetRef(int32_t nIndex) const
{
    return nIndex >= 0 && nIndex < GetNumRefs() ? m_vecRefs[static_cast<size_t>(nIndex)].get() : nullptr;
}

CSGStreamable* CSGRefPath::ResolveToLast(CSGStreamable* pFrom, CSGRefContext* pContext) const
{
    CSGStreamable* pObject = pFrom;
    for (size_t n = 0; pObject != nullptr && n + 1 < m_vecRefs.size(); ++n)
    {
        pObject = m_vecRefs[n]->Resolve(pObject, pContext);
    }
    return pObject;
}

CSGStreamable* CSGRefPath::Resolve(CSGStreamable* pFrom, CSGRefContext* pContext) const
{
    CSGStreamable* pObject = ResolveToLast(pFrom, pContext);
    return m_vecRefs.empty() || pObject == nullptr ? pObject : m_vecRefs.back()->Resolve(pObject, pContext);
}

CSGATFPtr CSGRefPath::ResolveTarget(CSGStreamable* pFrom, CSGRefContext* pContext) const
{
    const auto* pTargetRef = SGStreamableCast<CSGATFRef>(GetRef(GetNumRefs() - 1));
    QD_CHECK_NOT_NULL(pTargetRef, nullptr);
    CSGStreamable* pObject = ResolveToLast(pFrom, pContext);
    return pObject != nullptr ? pTargetRef->ResolveTarget(pObject, pContext) : nullptr;
}

bool CSGRefPath::RenameNode(const CQDCompactString& rOldName, const CQDCompactString& rNewName)
{
    bool bRenamed = false;
    for (const CSGRefPtr& spRef : m_vecRefs)
    {
        CQDCompactString* pName = FindField<CSGRefFind_DescendantNodeByGlobalName>(spRef.get());
        if (pName != nullptr && *pName == rOldName)
        {
            *pName = rNewName;
            bRenamed = true;
        }
    }
    return bRenamed;
}

bool CSGRefPath::GetTransformNames(CQDCompactString& rNodeGlobalName, CQDCompactString& rTransformName) const
{
    const CQDCompactString* pNodeName = nullptr;
    const CQDCompactString* pTransformName = nullptr;
    for (const CSGRefPtr& spRef : m_vecRefs)
    {
        const CQDCompactString* pNode = FindField<CSGRefFind_DescendantNodeByGlobalName>(spRef.get());
        const CQDCompactString* pTransform = FindField<CSGRefFind_TransformByName>(spRef.get());
        pNodeName = pNode != nullptr ? pNode : pNodeName;
        pTransformName = pTransform != nullptr ? pTransform : pTransformName;
        if (SGStreamableCast<CSGATFRef_ChildNodeByLocalName>(spRef.get()) != nullptr)
        {
            return false; // it goes on to another node
        }
    }
    if (pNodeName == nullptr || pTransformName == nullptr)
    {
        return false;
    }
    rNodeGlobalName = *pNodeName;
    rTransformName = *pTransformName;
    return true;
}

bool CSGRefPath::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nCount = pStream->ReadInt32();
    QD_CHECK(nCount <= MAX_REFS, false);
    QD_CHECK(pStream->CanRead(nCount, sizeof(int32_t)), false);
    // All places first: a reference that is loaded already is delivered while its id is read.
    m_vecRefs.resize(static_cast<size_t>(nCount));
    for (int32_t n = 0; n < nCount; ++n)
    {
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, n), false);
    }
    return true;
}

bool CSGRefPath::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteInt32(GetNumRefs());
    for (const CSGRefPtr& spRef : m_vecRefs)
    {
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, spRef.get()), false);
    }
    return true;
}

bool CSGRefPath::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    for (const CSGRefPtr& spRef : m_vecRefs)
    {
        QD_CHECK_CALL(spRef->PreWrite(pSaveState), false);
    }
    return true;
}

bool CSGRefPath::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    if (nCookie < 0 || nCookie >= GetNumRefs())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    return SetLoadedLink(m_vecRefs[static_cast<size_t>(nCookie)], pChild);
}

bool CSGRefPath::PostRead(CSGStreamableLoadState*)
{
    for (const CSGRefPtr& spRef : m_vecRefs)
    {
        QD_CHECK_NOT_NULL(spRef, false);
    }
    return true;
}

void CSGRefPath::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGRefPath: 0x%08llX References: %d", rIndent, LogAddress(this),
        GetNumRefs());
    for (const CSGRefPtr& spRef : m_vecRefs)
    {
        spRef->OutputDebugInfo(rIndent + "  ");
    }
}
