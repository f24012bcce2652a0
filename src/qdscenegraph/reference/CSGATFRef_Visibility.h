// Refers to a node as something that can be shown and hidden.
#pragma once

#include "qdscenegraph/reference/CSGATFRef.h"

// Found from the node itself. Its record is empty.
class CSGATFRef_Visibility final : public SGStreamableDerivedInterface<CSGATFRef_Visibility, CSGATFRef>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGATFRef_Visibility";
    static const CSGTypeInfo<CSGRef> ms_objTypeInfo;

    static boost::intrusive_ptr<CSGATFRef_Visibility> Create();

    CSGStreamable* Resolve(CSGStreamable* pFrom, CSGRefContext* pContext = nullptr) const override;
    CSGATFPtr ResolveTarget(CSGStreamable* pFrom, CSGRefContext* pContext = nullptr) const override;
    const CSGTypeInfo<CSGRef>* GetTypeInfo() const override { return &ms_objTypeInfo; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;
};
