#include "qdscenegraph/transform/CSGTransformProduct.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

#include <unordered_set>

CSGTransform* CSGTransformProduct::GetTransformObject(int32_t nIndex) const
{
    return nIndex >= 0 && nIndex < GetNumTransforms() ? m_vecLinks[static_cast<size_t>(nIndex)].Get()
                                                      : nullptr;
}

CTransform3 CSGTransformProduct::GetTransform() const
{
    if (m_bDirty)
    {
        m_objProduct = CTransform3();
        for (const CSGTransformLink& rLink : m_vecLinks)
        {
            if (const CSGTransform* pTransform = rLink.Get())
            {
                m_objProduct = m_objProduct * pTransform->GetTransform();
            }
        }
        m_bDirty = false;
    }
    return m_objProduct;
}

void CSGTransformProduct::MarkDirty()
{
    if (!m_bDirty)
    {
        m_bDirty = true;
        CSGTransform::MarkDirty();
    }
}

bool CSGTransformProduct::IsOrContains(const CSGTransform* pTransform) const
{
    // Products may be shared by products: each is looked at once.
    std::vector<const CSGTransformProduct*> vecFound = {this};
    std::unordered_set<const CSGTransform*> setFound = {this};
    while (!vecFound.empty() && !setFound.contains(pTransform))
    {
        const CSGTransformProduct* pProduct = vecFound.back();
        vecFound.pop_back();
        for (const CSGTransformLink& rLink : pProduct->m_vecLinks)
        {
            const auto* pFactor = dynamic_cast<const CSGTransformProduct*>(rLink.Get());
            if (pFactor != nullptr && setFound.insert(pFactor).second)
            {
                vecFound.push_back(pFactor);
            }
        }
    }
    return setFound.contains(pTransform);
}

bool CSGTransformProduct::Append(CSGTransform* pTransform)
{
    QD_CHECK_ARG(pTransform, false);
    const auto* pProduct = dynamic_cast<const CSGTransformProduct*>(pTransform);
    QD_CHECK(pProduct == nullptr || !pProduct->IsOrContains(this), false);
    m_vecLinks.emplace_back(this).Set(pTransform);
    return true;
}

bool CSGTransformProduct::AppendCopies(const CSGTransformProduct& rOriginal, CCopies& rCopies)
{
    m_vecLinks.reserve(rOriginal.m_vecLinks.size());
    for (const CSGTransformLink& rLink : rOriginal.m_vecLinks)
    {
        QD_CHECK_NOT_NULL(rLink.Get(), false);
        const CTransformPtr spCopy = rLink.Get()->Copy(rCopies);
        QD_CHECK_CREATED(spCopy, false);
        m_vecLinks.emplace_back(this).Set(spCopy.get());
    }
    return true;
}

bool CSGTransformProduct::ReadTransforms(int32_t nCount, CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK(pStream->CanRead(nCount, sizeof(int32_t)), false);
    // All places first: a transform that is loaded already is delivered while its id is read.
    m_vecLinks.reserve(static_cast<size_t>(nCount));
    for (int32_t n = 0; n < nCount; ++n)
    {
        m_vecLinks.emplace_back(this);
    }
    for (int32_t n = 0; n < nCount; ++n)
    {
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, this, n), false);
    }
    return true;
}

bool CSGTransformProduct::WriteTransforms(CStream* pStream, CSGStreamableSaveState* pSaveState) const
{
    for (const CSGTransformLink& rLink : m_vecLinks)
    {
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, rLink.Get()), false);
    }
    return true;
}

bool CSGTransformProduct::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    if (nCookie < 0 || nCookie >= GetNumTransforms())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Bad cookie %d", nCookie);
        return false;
    }
    return m_vecLinks[static_cast<size_t>(nCookie)].SetLoaded(pChild);
}

bool CSGTransformProduct::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        return true;
    }
    QD_CHECK_CALL(CSGTransform::PreWrite(pSaveState), false);
    for (const CSGTransformLink& rLink : m_vecLinks)
    {
        CSGTransform* pTransform = rLink.Get();
        QD_CHECK_NOT_NULL(pTransform, false);
        QD_CHECK_CALL(pTransform->PreWrite(pSaveState), false);
    }
    return true;
}

bool CSGTransformProduct::PostRead(CSGStreamableLoadState*)
{
    for (const CSGTransformLink& rLink : m_vecLinks)
    {
        const CSGTransform* pTransform = rLink.Get();
        QD_CHECK_NOT_NULL(pTransform, false);
    }
    return true;
}

void CSGTransformProduct::OutputDebugInfo(const CQDString& rIndent) const
{
    struct CItem
    {
        const CSGTransform* m_pTransform;
        size_t m_nDepth;
    };
    std::vector<CItem> vecItems = {{this, 0}};
    std::unordered_set<const CSGTransform*> setListed;
    while (!vecItems.empty())
    {
        const CItem objItem = vecItems.back();
        vecItems.pop_back();
        const CQDString strIndent = rIndent + CQDString(2 * objItem.m_nDepth, ' ');
        const auto* pProduct = dynamic_cast<const CSGTransformProduct*>(objItem.m_pTransform);
        if (pProduct == nullptr)
        {
            objItem.m_pTransform->OutputDebugInfo(strIndent);
            continue;
        }
        const bool bNew = setListed.insert(pProduct).second;
        Log(QD_SCENEGRAPH, LOG_INFO, "%s%s: 0x%08llX Name: '%s' - Transforms: %d%s", strIndent,
            pProduct->GetTypeInfo()->GetName(), LogAddress(pProduct), pProduct->GetName(),
            pProduct->GetNumTransforms(), bNew ? "" : " (as above)");
        for (int32_t n = bNew ? pProduct->GetNumTransforms() - 1 : -1; n >= 0; --n)
        {
            if (const CSGTransform* pFactor = pProduct->GetTransformObject(n))
            {
                vecItems.push_back({pFactor, objItem.m_nDepth + 1});
            }
        }
    }
}
