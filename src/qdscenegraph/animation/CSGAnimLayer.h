// One animation as it is played: how strongly, how long and on what.
#pragma once

#include "qdscenegraph/animation/CSGAnimTimeSource.h"
#include "qdscenegraph/animation/CSGAnimation.h"

#include <memory>

// The clock is no part of what is saved and copied.
class CSGAnimLayer final : public SGStreamableInterface<CSGAnimLayer>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGAnimLayer";
    using CAnimationPtr = CSGAnimation::CAnimationPtr;
    using CMask = std::vector<CQDCompactString>;

    // Of the weight 1, looping, without a mask. Null (reported) without an animation.
    static boost::intrusive_ptr<CSGAnimLayer> Create(const CQDCompactString& rName,
                                                     const CAnimationPtr& spAnimation);
    // A layer like this one for the same animation; it has no clock yet.
    boost::intrusive_ptr<CSGAnimLayer> CreateCopy() const;

    const CQDCompactString& GetName() const { return m_strName; }
    CSGAnimation* GetAnimation() const { return m_spAnimation.get(); }

    // How much of the layer shows over those below it: 0 nothing, 1 it alone. Kept within these; what is not
    // a number is 0.
    float GetWeight() const { return m_fWeight; }
    void SetWeight(float fWeight);
    // Whether the animation begins again at its end, or stays there.
    bool IsLooping() const { return m_bLooping; }
    void SetLooping(bool bLooping) { m_bLooping = bLooping; }

    // Restricts the layer to the channels that have one of the names or lead to a node with it as global
    // name. Without names it plays all channels. Players take it in when they bind.
    void SetMask(CMask vecNames);
    const CMask& GetMask() const;
    bool PlaysChannel(const CSGAnimChannel& rChannel) const;

    CSGAnimTimeSource* GetTimeSource() const { return m_spTimeSource.get(); }
    void SetTimeSource(const CSGAnimTimeSourcePtr& spTimeSource) { m_spTimeSource = spTimeSource; }
    // Where in its animation the layer stands, in the animation's seconds: the begin time when its clock
    // stands at 0, and without one.
    float GetAnimationTime() const;

    // A node has been renamed: the mask follows it.
    void RenameInMask(const CQDCompactString& rOldName, const CQDCompactString& rNewName);

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    // A loaded layer has an animation.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override { m_spAnimation.reset(); }
    // Written to the log at level 7; of the animation the name.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    CQDCompactString m_strName;
    CAnimationPtr m_spAnimation;
    float m_fWeight = 1.0f;
    bool m_bLooping = true;
    std::shared_ptr<const CMask> m_spMask; // null for none; copies of the layer share it
    CSGAnimTimeSourcePtr m_spTimeSource;
};

using CSGAnimLayerPtr = boost::intrusive_ptr<CSGAnimLayer>;
