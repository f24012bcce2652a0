// A named time range over the channels that drive a scene.
#pragma once

#include "qdscenegraph/animation/CSGAnimChannel.h"

#include <vector>

class CSGAnimation final : public SGStreamableInterface<CSGAnimation>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGAnimation";
    using CAnimationPtr = boost::intrusive_ptr<CSGAnimation>;
    using CChannelList = std::vector<CSGAnimChannelPtr>;

    // Times in seconds. Null (reported) without channels, and unless begin is at or before end.
    static CAnimationPtr Create(const CChannelList& rListChannels, float fBeginTime, float fEndTime);
    // From the first key of all channels to the last. Null (reported) also for a channel that is null or has
    // no keys.
    static CAnimationPtr Create(const CChannelList& rListChannels);

    const CQDCompactString& GetName() const { return m_strName; }
    void SetName(const CQDCompactString& rName) { m_strName = rName; }
    // Seconds.
    float GetBeginTime() const { return m_fBeginTime; }
    float GetEndTime() const { return m_fEndTime; }

    int32_t GetNumChannels() const { return static_cast<int32_t>(m_listChannels.size()); }
    // Null (reported) for an index that is out of range.
    CSGAnimChannel* GetChannel(int32_t nIndex) const;
    // Removes every channel of the name; the others keep their order.
    void RemoveChannel(const CQDCompactString& rName);
    // A new animation of the same name over the given times, with a list of its own of the same channels:
    // keys are shared. Null (reported) as from Create.
    CAnimationPtr Slice(float fBeginTime, float fEndTime) const;
    // What can be played on a tree that has not all that the animation drives: the animation itself when all
    // its channels find something below pNode, else a new one of the same name and times with those that do;
    // there need not be any.
    CAnimationPtr GetForTree(CSGNode* pNode);

    // Gives what the channels drive in the tree below pNode its value at the animation's begin time, or at
    // another one. A channel that fails is reported; the others are posed nonetheless. False when one failed.
    bool PoseModel(CSGNode* pNode) const;
    bool PoseModelAtTime(CSGNode* pNode, float fTime) const;
    // Whether all channels find what they drive.
    bool CanAnimate(CSGNode* pNode) const;
    // A node has been renamed: its channels will find it again. Whether a channel names it.
    bool RenameNode(const CQDCompactString& rOldName, const CQDCompactString& rNewName);

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    // A loaded animation has a channel in every place.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override { m_listChannels.clear(); }
    // Written to the log at level 7.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    CQDCompactString m_strName;
    float m_fBeginTime = 0.0f;
    float m_fEndTime = 0.0f;
    CChannelList m_listChannels;
};
