// One curve of an animation and what it drives.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/animation/CSGAnimSampler.h"
#include "qdscenegraph/reference/CSGRefPath.h"

class CSGNode;

// Holds the way to what it writes, never the object itself: the same channel poses every tree that has such
// an object. Animations may share it.
class CSGAnimChannel final : public SGStreamableInterface<CSGAnimChannel>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGAnimChannel";
    using CSamplerPtr = boost::intrusive_ptr<CSGAnimSampler>;

    // The most floats that a value has.
    static constexpr int32_t MAX_OUTPUTS = 16;

    // Null (reported) without a sampler or a reference.
    static boost::intrusive_ptr<CSGAnimChannel> Create(const CQDCompactString& rName,
                                                       const CSamplerPtr& spSampler,
                                                       const CSGRefPathPtr& spTargetRef);

    // By convention the target as the source file has it, "box/rot.ANGLE". Several channels may share it.
    const CQDCompactString& GetName() const { return m_strName; }
    void SetName(const CQDCompactString& rName) { m_strName = rName; }
    CSGAnimSampler* GetSampler() const { return m_spSampler.get(); }
    // Null (reported) when the channel has none.
    CSGRefPath* GetTargetRef() const;

    // What the channel writes in the tree below pNode; with the tree's context no tree is searched. Null
    // (reported) when it is not there, and when its values have not as many floats as the sampler's.
    CSGATFPtr GetTarget(CSGNode* pNode, CSGRefContext* pContext = nullptr) const;
    // Whether GetTarget would find it; an object that is not there is not reported.
    bool CanAnimate(CSGNode* pNode, CSGRefContext* pContext = nullptr) const;
    // Gives the target the value at a time, in seconds of the sampler. False (reported) when there is no
    // target or no value.
    bool PoseModel(CSGNode* pNode, float fTime, CSGRefContext* pContext = nullptr) const;
    bool UpdateOutputAbsoluteTime(CSGATF* pTarget, float fTime) const;

    // Whether values of so many floats can be animated: 1, 2, 3, 4, 12 or 16 (others are reported).
    static bool IsSupportedOutputCount(int32_t nOutputs);

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    // A loaded channel has a sampler and a reference.
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    // Written to the log at level 7, each line behind the indent: every key, too.
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    CQDCompactString m_strName;
    CSamplerPtr m_spSampler;
    CSGRefPathPtr m_spTargetRef;
};

using CSGAnimChannelPtr = boost::intrusive_ptr<CSGAnimChannel>;
