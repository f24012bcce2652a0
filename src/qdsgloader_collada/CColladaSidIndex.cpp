#include "qdsgloader_collada/CColladaSidIndex.h"

#include "qdsgloader_collada/CColladaDom.h"

#include <algorithm>

namespace
{

constexpr size_t NONE = static_cast<size_t>(-1);

// The library that the element is in: what stands in the root element.
daeElement& GetTop(daeElement& rElement)
{
    daeElement* pTop = &rElement;
    for (daeElement* pAbove = pTop->getParentElement();
         pAbove != nullptr && pAbove->getParentElement() != nullptr; pAbove = pAbove->getParentElement())
    {
        pTop = pAbove;
    }
    return *pTop;
}

} // namespace

daeElement* CColladaSidIndex::Find(daeElement& rParent, const CQDCompactString& rSid)
{
    size_t nParent = m_mapNumbers.Find(&rParent, NONE);
    if (nParent == NONE)
    {
        AddTree(GetTop(rParent));
        nParent = m_mapNumbers.Find(&rParent, NONE);
    }
    const size_t nSid = rSid.empty() ? NONE : m_mapSids.Find(rSid.c_str(), NONE);
    if (nSid == NONE || nParent == NONE)
    {
        return nullptr;
    }
    const auto [it, bNew] = m_mapFound.try_emplace({nParent, nSid});
    if (bNew)
    {
        it->second = Search(nParent, m_vecSids[nSid]);
    }
    return it->second;
}

daeElement* CColladaSidIndex::Search(size_t nParent, const CSid& rSid) const
{
    const CPlace& rParent = m_vecPlaces[nParent];
    const CPlace* pFound = nullptr;
    for (auto it = std::ranges::upper_bound(rSid.vecNumbers, nParent);
         it != rSid.vecNumbers.end() && *it < rParent.nEnd; ++it)
    {
        const CPlace& rPlace = m_vecPlaces[*it];
        if (pFound == nullptr || rPlace.nDepth < pFound->nDepth)
        {
            pFound = &rPlace;
        }
        if (pFound->nDepth == rParent.nDepth + 1)
        {
            break;
        }
    }
    return pFound != nullptr ? pFound->pElement : nullptr;
}

void CColladaSidIndex::AddTree(daeElement& rTop)
{
    struct CFrame
    {
        size_t nNumber;
        daeTArray<daeElementRef> arrChildren;
        size_t nNextChild = 0;
    };
    // A stack of its own: documents may be nested deeper than calls.
    std::vector<CFrame> vecStack;
    vecStack.push_back({AddPlace(rTop, 0), rTop.getChildren()});
    while (!vecStack.empty())
    {
        CFrame& rFrame = vecStack.back();
        if (rFrame.nNextChild == rFrame.arrChildren.getCount())
        {
            m_vecPlaces[rFrame.nNumber].nEnd = m_vecPlaces.size();
            vecStack.pop_back();
            continue;
        }
        daeElement& rChild = *rFrame.arrChildren[rFrame.nNextChild++];
        vecStack.push_back({AddPlace(rChild, vecStack.size()), rChild.getChildren()});
    }
}

size_t CColladaSidIndex::AddPlace(daeElement& rElement, size_t nDepth)
{
    const size_t nNumber = m_vecPlaces.size();
    m_vecPlaces.push_back({&rElement, nDepth, nNumber});
    m_mapNumbers.Add(&rElement, nNumber);
    const CQDCompactString strSid(rElement.getAttribute("sid"));
    if (!strSid.empty())
    {
        if (m_mapSids.Add(strSid.c_str(), m_vecSids.size()))
        {
            m_vecSids.push_back({strSid, {}});
        }
        m_vecSids[m_mapSids.Find(strSid.c_str(), NONE)].vecNumbers.push_back(nNumber);
    }
    return nNumber;
}
