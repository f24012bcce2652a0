// What an animations document says: a scene file and the pieces that its animation is cut into.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdcommon/CQDString.h"

#include <map>
#include <optional>
#include <vector>

// One animation to be cut out. Times are in seconds.
struct CAnimationSlice
{
    CQDString m_strName;
    float m_fStartTime = 0;
    std::optional<float> m_fEndTime; // none: to the end of the channels
    bool m_bIgnoreChannel = false;   // take every channel that is not in the set
    CQDString m_strChannel;          // the id of a channel set, which may not exist; empty: all channels
};

class CAnimationSliceData
{
  public:
    using CChannelList = std::vector<CQDCompactString>;
    using CChannelSetMap = std::map<CQDString, CChannelList>;

    // Names in all sets together. A set can take in others whole, so that a short document could name more
    // than any memory holds.
    static constexpr size_t MAX_CHANNEL_NAMES = 1 << 20;

    bool SetDAEFilename(const CQDString& rStrFilename);
    // Frames per second, greater than zero.
    bool SetFPS(float fFPS);
    // Frame numbers become times at the rate that is set by now; there must be one.
    bool AddSlice(const CQDString& rStrName, int nStartFrame, std::optional<int> nEndFrame,
                  const CQDString& rStrChannel, bool bIgnoreChannel);
    // The first set of an id stays.
    bool AddChannelSet(const CQDString& rStrID, const CChannelList& rListChannel);

    // As written in the document: may be relative to the document's directory.
    const CQDString& GetDAEFilename() const { return m_strDAEFilename; }
    // 0 when none was set.
    float GetFPS() const { return m_fFPS; }
    // In document order.
    const std::vector<CAnimationSlice>& GetSlices() const { return m_listSlices; }
    // By id; names in document order, repeated where the document repeats them.
    const CChannelSetMap& GetChannelSets() const { return m_mapChannels; }
    size_t GetNumChannelNames() const { return m_nChannelNames; }

  private:
    CQDString m_strDAEFilename;
    float m_fFPS = 0;
    std::vector<CAnimationSlice> m_listSlices;
    CChannelSetMap m_mapChannels;
    size_t m_nChannelNames = 0;
};
