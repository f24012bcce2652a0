#include "qdscenegraph/transform/CSGDirtyGraphNode.h"

#include <utility>

void CSGDirtyGraphNode::MarkDirty()
{
    for (const CSGDirtyGraphLink* pLink = m_pFirstLink; pLink != nullptr; pLink = pLink->m_pNext)
    {
        pLink->m_pDependent->MarkDirty();
    }
}

bool CSGDirtyGraphNode::IsShared() const
{
    return m_pFirstLink != nullptr && m_pFirstLink->m_pNext != nullptr;
}

CSGDirtyGraphLink::CSGDirtyGraphLink(CSGDirtyGraphLink&& rOther) noexcept
    : m_pDependent(rOther.m_pDependent),
      m_pNext(std::exchange(rOther.m_pNext, nullptr)),
      m_ppToThis(std::exchange(rOther.m_ppToThis, nullptr))
{
    if (m_ppToThis != nullptr)
    {
        *m_ppToThis = this;
    }
    if (m_pNext != nullptr)
    {
        m_pNext->m_ppToThis = &m_pNext;
    }
}

void CSGDirtyGraphLink::Connect(CSGDirtyGraphNode* pSource)
{
    Disconnect();
    m_pNext = std::exchange(pSource->m_pFirstLink, this);
    m_ppToThis = &pSource->m_pFirstLink;
    if (m_pNext != nullptr)
    {
        m_pNext->m_ppToThis = &m_pNext;
    }
}

void CSGDirtyGraphLink::Disconnect()
{
    if (m_ppToThis != nullptr)
    {
        *m_ppToThis = m_pNext;
        if (m_pNext != nullptr)
        {
            m_pNext->m_ppToThis = m_ppToThis;
        }
        m_pNext = nullptr;
        m_ppToThis = nullptr;
    }
}
