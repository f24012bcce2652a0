// The base of everything that says how one space lies in another: what local transforms are built from.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdcommon/CTransform3.h"
#include "qdscenegraph/object/CSGTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"
#include "qdscenegraph/transform/CSGDirtyGraphNode.h"

#include <unordered_map>

// One transform may stand in several places; all of them see a change of it. Setters do nothing when the
// value is the same, so that no cache becomes dirty for nothing.
class CSGTransform : public SGStreamableInterface<CSGTransform>, public CSGDirtyGraphNode
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGTransform";
    using CTransformPtr = boost::intrusive_ptr<CSGTransform>;
    // The copies of shared transforms, by their originals.
    using CCopies = std::unordered_map<const CSGTransform*, CTransformPtr>;

    // The name by which animations find a transform of a node; may be empty.
    const CQDCompactString& GetName() const { return m_strName; }
    void SetName(const CQDCompactString& rName) { m_strName = rName; }

    virtual CTransform3 GetTransform() const = 0;
    virtual const CSGTypeInfo<CSGTransform>* GetTypeInfo() const = 0;

    // A deep copy; what is shared within the original is shared within the copy. Null on failure.
    CTransformPtr Copy() const;
    // The same, as one of several copies that share what the originals share.
    CTransformPtr Copy(CCopies& rCopies) const;

    // The record begins with the name.
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;

    // Written to the log at level 7, each line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const = 0;
    // The rows of a matrix and the translation, four lines.
    static void OutputRows(const CQDString& rIndent, const CTransform3& rTransform);

  private:
    // A copy without the name.
    virtual CTransformPtr CreateCopy(CCopies& rCopies) const = 0;

    CQDCompactString m_strName;
};

// Base of a concrete kind of transform T, which declares `static const CSGTypeInfo<CSGTransform>
// ms_objTypeInfo`.
template <class T, class BASE = CSGTransform>
class CSGTransformInterface : public SGStreamableDerivedInterface<T, BASE>
{
  public:
    const CSGTypeInfo<CSGTransform>* GetTypeInfo() const override { return &T::ms_objTypeInfo; }
};
