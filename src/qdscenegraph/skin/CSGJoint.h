// One joint of a skin: which node of a skeleton it follows, and where that node stood when the skin was
// bound.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdcommon/CTransform3.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

// Does not change once it is made: the skins of one mesh share their joints.
class CSGJoint final : public SGStreamableInterface<CSGJoint>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGJoint";

    // A joint without a name is never bound to a node: it stands for the bind shape itself.
    static boost::intrusive_ptr<CSGJoint> Create(const CQDCompactString& rLocalName,
                                                 const CTransform3& rInverseBind);

    // The local name of its node.
    const CQDCompactString& GetLocalName() const { return m_strLocalName; }
    // From the space in which the skin was bound to the space of the joint.
    const CTransform3& GetInverseBindTransform() const { return m_objInverseBind; }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    CQDCompactString m_strLocalName;
    CTransform3 m_objInverseBind;
};
