#include "qdsgloader_collada/CColladaSidIndex.h"

#include "daedom/CDaeDatabase_Ids.h"
#include "qdsgloader_collada/CColladaDom.h"

#include <algorithm>

namespace
{

constexpr auto NONE = static_cast<uint32_t>(-1);

// Every DAE has a database of this kind (CDaeFile).
std::span<const daeElementRef> GetElements(DAE& rDAE)
{
    return static_cast<CDaeDatabase_Ids*>(rDAE.getDatabase())->GetElements();
}

} // namespace

daeElement* CColladaSidIndex::Find(daeElement& rParent, const CQDCompactString& rSid)
{
    if (m_vecPlaces.empty())
    {
        AddDocument(*rParent.getDAE());
    }
    const uint32_t uiParent = m_mapNumbers.Find(&rParent, NONE);
    const uint32_t uiSid = rSid.empty() ? NONE : m_mapSids.Find(rSid.c_str(), NONE);
    if (uiSid == NONE || uiParent == NONE)
    {
        return nullptr;
    }
    const auto [it, bNew] = m_mapFound.try_emplace({uiParent, uiSid});
    if (bNew)
    {
        it->second = Search(uiParent, m_vecSids[uiSid]);
    }
    return it->second != NONE ? GetElements(*rParent.getDAE())[it->second].cast() : nullptr;
}

uint32_t CColladaSidIndex::Search(uint32_t uiParent, const CSid& rSid) const
{
    const auto& rNumbers = rSid.vecNumbers;
    uint32_t uiFound = NONE;
    for (size_t n = static_cast<size_t>(std::ranges::upper_bound(rNumbers, uiParent) - rNumbers.begin());
         n < rNumbers.size() && rNumbers[n] < m_vecPlaces[uiParent].uiEnd; n = rSid.vecShallower[n])
    {
        uiFound = rNumbers[n];
    }
    return uiFound;
}

// The elements come from the database: the DOM's own lists of children take time that grows with the square
// of their number.
void CColladaSidIndex::AddDocument(DAE& rDAE)
{
    const auto arrElements = GetElements(rDAE);
    m_vecPlaces.reserve(arrElements.size());
    for (const daeElementRef& rspElement : arrElements)
    {
        const auto uiNumber = static_cast<uint32_t>(m_vecPlaces.size());
        const uint32_t uiAbove = m_mapNumbers.Find(rspElement->getParentElement(), NONE);
        m_vecPlaces.push_back(
            {uiAbove, uiAbove != NONE ? m_vecPlaces[uiAbove].uiDepth + 1 : 0, uiNumber + 1});
        m_mapNumbers.Add(rspElement.cast(), uiNumber);
        AddSid(rspElement->getAttribute("sid"), uiNumber);
    }
    for (size_t n = m_vecPlaces.size(); n-- > 0;)
    {
        if (m_vecPlaces[n].uiAbove != NONE)
        {
            CPlace& rAbove = m_vecPlaces[m_vecPlaces[n].uiAbove];
            rAbove.uiEnd = std::max(rAbove.uiEnd, m_vecPlaces[n].uiEnd);
        }
    }
    for (CSid& rSid : m_vecSids)
    {
        LinkShallower(rSid);
    }
}

void CColladaSidIndex::AddSid(const CQDCompactString& rSid, uint32_t uiNumber)
{
    if (rSid.empty())
    {
        return;
    }
    if (m_mapSids.Add(rSid.c_str(), static_cast<uint32_t>(m_vecSids.size())))
    {
        m_vecSids.push_back({rSid, {}, {}});
    }
    m_vecSids[m_mapSids.Find(rSid.c_str(), NONE)].vecNumbers.push_back(uiNumber);
}

// From right to left, each follows the links behind it.
void CColladaSidIndex::LinkShallower(CSid& rSid) const
{
    const auto GetDepth = [&](size_t n) { return m_vecPlaces[rSid.vecNumbers[n]].uiDepth; };
    const size_t nCount = rSid.vecNumbers.size();
    rSid.vecShallower.resize(nCount);
    for (size_t n = nCount; n-- > 0;)
    {
        size_t nNext = n + 1;
        while (nNext < nCount && GetDepth(nNext) >= GetDepth(n))
        {
            nNext = rSid.vecShallower[nNext];
        }
        rSid.vecShallower[n] = static_cast<uint32_t>(nNext);
    }
}
