#include "qdsgloader_collada/CColladaSceneIndex.h"

#include <algorithm>

CColladaSceneIndex::CColladaSceneIndex(CSGNode& rScene)
{
    for (CSGNode* pNode = &rScene; pNode != nullptr; pNode = pNode->GetNextInTree(&rScene))
    {
        const size_t nNumber = m_vecNodes.size();
        m_vecNodes.push_back(pNode);
        m_mapNumbers.Add(pNode, nNumber);
        m_vecLocalNames.emplace_back(pNode->GetLocalName().c_str(), nNumber);
        m_vecGlobalNames.emplace_back(pNode->GetGlobalName().c_str(), nNumber);
    }
    m_vecEnds.resize(m_vecNodes.size());
    for (size_t n = m_vecNodes.size(); n-- > 0;)
    {
        m_vecEnds[n] = std::max(m_vecEnds[n], n + 1);
        if (n > 0)
        {
            size_t& rnParentEnd = m_vecEnds[m_mapNumbers.Find(m_vecNodes[n]->GetParent(), 0)];
            rnParentEnd = std::max(rnParentEnd, m_vecEnds[n]);
        }
    }
    std::ranges::sort(m_vecLocalNames);
    std::ranges::sort(m_vecGlobalNames);
}

CSGNode* CColladaSceneIndex::Find(const CNames& rNames, const CQDCompactString& rName, size_t nBegin,
                                  size_t nEnd) const
{
    const auto it = std::ranges::lower_bound(rNames, std::pair(rName.c_str(), nBegin));
    return it != rNames.end() && it->first == rName.c_str() && it->second < nEnd ? m_vecNodes[it->second]
                                                                                 : nullptr;
}

CSGNode* CColladaSceneIndex::FindLocalName(const CSGNode& rRoot, const CQDCompactString& rName) const
{
    const size_t nBegin = m_mapNumbers.Find(&rRoot, NONE);
    return nBegin != NONE ? Find(m_vecLocalNames, rName, nBegin, m_vecEnds[nBegin]) : nullptr;
}

CSGNode* CColladaSceneIndex::FindGlobalName(const CQDCompactString& rName) const
{
    return rName.empty() ? nullptr : Find(m_vecGlobalNames, rName, 0, m_vecNodes.size());
}
