// Finds elements by their scoped ids.
#pragma once

#include "qdcommon/CPointerMap.h"
#include "qdcommon/CQDCompactString.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <map>
#include <vector>

// Answers what a search below an element, level by level, would come upon first. One walk through a library
// serves all questions about what is in it: with as many channels as nodes, searches would take for ever. The
// document must not change meanwhile.
class CColladaSidIndex
{
  public:
    // Of the elements below the parent with the sid, the first in document order of those the fewest levels
    // below. Null when there is none, and for the empty sid.
    daeElement* Find(daeElement& rParent, const CQDCompactString& rSid);

  private:
    // Elements are numbered in document order.
    struct CPlace
    {
        daeElement* pElement;
        size_t nDepth;
        size_t nEnd; // the number behind the last one below it
    };
    struct CSid
    {
        CQDCompactString strSid; // keeps its characters where they are
        std::vector<size_t> vecNumbers;
    };

    void AddTree(daeElement& rTop);
    size_t AddPlace(daeElement& rElement, size_t nDepth);
    daeElement* Search(size_t nParent, const CSid& rSid) const;

    std::vector<CPlace> m_vecPlaces;
    CPointerMap<size_t> m_mapNumbers; // of elements
    std::vector<CSid> m_vecSids;
    CPointerMap<size_t> m_mapSids; // by their characters, which equal sids share
    // By parent and sid: the same question may be asked often.
    std::map<std::pair<size_t, size_t>, daeElement*> m_mapFound;
};
