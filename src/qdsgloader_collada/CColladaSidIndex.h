// Finds elements by their scoped ids.
#pragma once

#include "qdcommon/CPointerMap.h"
#include "qdcommon/CQDCompactString.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <cstdint>
#include <map>
#include <vector>

// Answers what a search below an element, level by level, would come upon first. One walk through the
// document serves all questions: with as many channels as nodes, searches would take for ever. The document
// must not change meanwhile.
class CColladaSidIndex
{
  public:
    // Of the elements below the parent with the sid, the first in document order of those the fewest levels
    // below. Null when there is none, and for the empty sid. All parents must be of one document.
    daeElement* Find(daeElement& rParent, const CQDCompactString& rSid);

  private:
    // Elements are numbered in document order.
    struct CPlace
    {
        uint32_t uiAbove; // the number of the element that it is in
        uint32_t uiDepth;
        uint32_t uiEnd; // the number behind the last one below it
    };
    struct CSid
    {
        CQDCompactString strSid;            // keeps its characters where they are
        std::vector<uint32_t> vecNumbers;   // of the elements that have it
        std::vector<uint32_t> vecShallower; // for each of those the place of the next one that is less deep
    };

    void AddDocument(DAE& rDAE);
    void AddSid(const CQDCompactString& rSid, uint32_t uiNumber);
    void LinkShallower(CSid& rSid) const;
    // The number; NONE when there is no such element.
    uint32_t Search(uint32_t uiParent, const CSid& rSid) const;

    std::vector<CPlace> m_vecPlaces;    // of all elements
    CPointerMap<uint32_t> m_mapNumbers; // of elements
    std::vector<CSid> m_vecSids;
    CPointerMap<uint32_t> m_mapSids; // by their characters, which equal sids share
    // By parent and sid: the same question may be asked often.
    std::map<std::pair<uint32_t, uint32_t>, uint32_t> m_mapFound;
};
