// The concrete kinds of reference.
#pragma once

#include "qdscenegraph/reference/CSGATFRef.h"
#include "qdscenegraph/reference/CSGRefFind.h"

// A reference that finds its object as FIND does; its record is FIND's field. BASE is CSGRef, or CSGATFRef
// for the same as the target of an animation.
template <class FIND, class BASE>
class CSGRefKind final : public SGStreamableDerivedInterface<CSGRefKind<FIND, BASE>, BASE>
{
  public:
    using CField = typename FIND::CField;

    static constexpr const char* SG_TYPE_NAME = [] {
        if constexpr (std::is_same_v<BASE, CSGATFRef>)
        {
            return FIND::ATF_REF_NAME;
        }
        else
        {
            return FIND::REF_NAME;
        }
    }();
    static const CSGTypeInfo<CSGRef> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGRefKind> Create(const CField& rField);

    // The name or the number by which the object is found.
    const CField& GetField() const { return m_objField; }
    CField& EditField() { return m_objField; }

    CSGStreamable* Resolve(CSGStreamable* pFrom, CSGRefContext* pContext = nullptr) const override;
    ETarget GetTarget() const override;
    const CSGTypeInfo<CSGRef>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    CField m_objField{};
};

using CSGRef_Target = CSGRefKind<CSGRefFind_Target, CSGRef>;
using CSGRef_DataByType = CSGRefKind<CSGRefFind_DataByType, CSGRef>;
using CSGRef_DescendantNodeByGlobalName = CSGRefKind<CSGRefFind_DescendantNodeByGlobalName, CSGRef>;
using CSGRef_MaterialByGlobalName = CSGRefKind<CSGRefFind_MaterialByGlobalName, CSGRef>;
using CSGRef_MaterialParam = CSGRefKind<CSGRefFind_MaterialParam, CSGRef>;
using CSGRef_TransformByName = CSGRefKind<CSGRefFind_TransformByName, CSGRef>;

using CSGATFRef_Target = CSGRefKind<CSGRefFind_Target, CSGATFRef>;
using CSGATFRef_DataByType = CSGRefKind<CSGRefFind_DataByType, CSGATFRef>;
using CSGATFRef_DescendantNodeByGlobalName = CSGRefKind<CSGRefFind_DescendantNodeByGlobalName, CSGATFRef>;
using CSGATFRef_ChildNodeByLocalName = CSGRefKind<CSGRefFind_ChildNodeByLocalName, CSGATFRef>;
using CSGATFRef_MaterialByGlobalName = CSGRefKind<CSGRefFind_MaterialByGlobalName, CSGATFRef>;
using CSGATFRef_MaterialParam = CSGRefKind<CSGRefFind_MaterialParam, CSGATFRef>;
using CSGATFRef_TransformByName = CSGRefKind<CSGRefFind_TransformByName, CSGATFRef>;

extern template class CSGRefKind<CSGRefFind_Target, CSGRef>;
extern template class CSGRefKind<CSGRefFind_DataByType, CSGRef>;
extern template class CSGRefKind<CSGRefFind_DescendantNodeByGlobalName, CSGRef>;
extern template class CSGRefKind<CSGRefFind_MaterialByGlobalName, CSGRef>;
extern template class CSGRefKind<CSGRefFind_MaterialParam, CSGRef>;
extern template class CSGRefKind<CSGRefFind_TransformByName, CSGRef>;
extern template class CSGRefKind<CSGRefFind_Target, CSGATFRef>;
extern template class CSGRefKind<CSGRefFind_DataByType, CSGATFRef>;
extern template class CSGRefKind<CSGRefFind_DescendantNodeByGlobalName, CSGATFRef>;
extern template class CSGRefKind<CSGRefFind_ChildNodeByLocalName, CSGATFRef>;
extern template class CSGRefKind<CSGRefFind_MaterialByGlobalName, CSGATFRef>;
extern template class CSGRefKind<CSGRefFind_MaterialParam, CSGATFRef>;
extern template class CSGRefKind<CSGRefFind_TransformByName, CSGATFRef>;
