#include "qdscenegraph/geometry/CSGGeomList.h"

#include "qdscenegraph/streaming/CSGLoadedLinks.h"

#include <algorithm>
#include <unordered_set>

namespace
{
const SGStreamableRegistration<CSGGeomList> s_objRegistration(0x92BFEE0287497AEE, 1, 1);
}

boost::intrusive_ptr<CSGGeomList> CSGGeomList::Create() { return CSGMem::Construct<CSGGeomList>(); }

bool CSGGeomList::AddBinding(const boost::intrusive_ptr<CSGGeomBinding>& spBinding)
{
    QD_CHECK_ARG(spBinding, false);
    m_vecBindings.push_back(spBinding);
    m_objEditStamp.Renew();
    return true;
}

bool CSGGeomList::RemoveBinding(const CSGGeomBinding* pBinding)
{
    QD_CHECK_ARG(pBinding, false);
    const auto it = std::ranges::find(m_vecBindings, pBinding, &boost::intrusive_ptr<CSGGeomBinding>::get);
    QD_CHECK(it != m_vecBindings.end(), false);
    m_vecBindings.erase(it);
    m_objEditStamp.Renew();
    return true;
}

CSGGeomBinding* CSGGeomList::GetBinding(int32_t nBinding) const
{
    return nBinding >= 0 && nBinding < GetNumBindings() ? m_vecBindings[static_cast<size_t>(nBinding)].get()
                                                        : nullptr;
}

std::vector<CSGVertexBuffer*> CSGGeomList::GetVertexBuffers() const
{
    std::vector<CSGVertexBuffer*> vecBuffers;
    std::unordered_set<const CSGVertexBuffer*> setSeen;
    for (const auto& spBinding : m_vecBindings)
    {
        CSGVertexBuffer* pBuffer = spBinding->GetVertexBuffer();
        if (setSeen.insert(pBuffer).second)
        {
            vecBuffers.push_back(pBuffer);
        }
    }
    return vecBuffers;
}

const CSGBounds& CSGGeomList::GetBounds() const
{
    if (m_uiBoundsStamp != GetNewestStamp())
    {
        m_objBounds = ComputeBounds();
        m_uiBoundsStamp = GetNewestStamp();
    }
    return m_objBounds;
}

CSGBounds CSGGeomList::ComputeBounds() const
{
    const std::vector<CSGVertexBuffer*> vecBuffers = GetVertexBuffers();
    // The usual case, and the one where instances of one mesh share the work.
    if (vecBuffers.size() == 1)
    {
        return vecBuffers[0]->GetBounds();
    }
    CSGBounds objBounds;
    for (const CSGVertexBuffer* pBuffer : vecBuffers)
    {
        objBounds.m_objBox.Add(pBuffer->GetBounds().m_objBox);
    }
    if (!objBounds.m_objBox.IsEmpty())
    {
        CSGBoundingSphere& rSphere = objBounds.m_objSphere;
        rSphere.m_objCenter = objBounds.m_objBox.GetCenter();
        for (const CSGVertexBuffer* pBuffer : vecBuffers)
        {
            rSphere.m_fRadius = std::max(rSphere.m_fRadius, pBuffer->GetRadiusAround(rSphere.m_objCenter));
        }
    }
    return objBounds;
}

uint64_t CSGGeomList::GetNewestStamp() const
{
    if (m_uiNewestStampMadeAt == CSGEditStamp::GetLast())
    {
        return m_uiNewestStamp; // nothing at all has been edited since
    }
    m_uiNewestStamp = m_objEditStamp.Get();
    m_uiNewestStampMadeAt = CSGEditStamp::GetLast();
    for (const auto& spBinding : m_vecBindings)
    {
        // While a file is loaded, what it leaves out has perhaps not been found yet.
        if (const CSGVertexBuffer* pBuffer = spBinding ? spBinding->GetVertexBuffer() : nullptr)
        {
            m_uiNewestStamp = std::max(m_uiNewestStamp, pBuffer->GetEditStamp().Get());
        }
    }
    return m_uiNewestStamp;
}

bool CSGGeomList::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    return ReadLinks(m_vecBindings, pStream, pLoadState, this);
}

bool CSGGeomList::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    return WriteLinks(m_vecBindings, pStream, pSaveState);
}

bool CSGGeomList::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    return SetLoadedLink(m_vecBindings, nCookie, pChild);
}

bool CSGGeomList::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    // Many nodes may share a long list.
    if (pSaveState->HasObject(this))
    {
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    return PreWriteLinks(m_vecBindings, pSaveState);
}

bool CSGGeomList::PostRead(CSGStreamableLoadState*) { return HasAllLinks(m_vecBindings); }

void CSGGeomList::DropLinks() { m_vecBindings.clear(); }

void CSGGeomList::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGGeomList: 0x%08llX - Bindings: %d", rIndent, LogAddress(this),
        GetNumBindings());
    for (const auto& spBinding : m_vecBindings)
    {
        spBinding->OutputDebugInfo(rIndent + "    ");
    }
}
