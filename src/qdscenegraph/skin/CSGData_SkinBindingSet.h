// The skins of a node's geometry.
#pragma once

#include "qdscenegraph/node/CSGData.h"
#include "qdscenegraph/skin/CSGSkinBinding.h"
#include "qdscenegraph/skin/CSGSkinBounds.h"

// Stands on the node that also has the CSGData_Geometry with the bindings' geometry. Geometry that no binding
// names is not skinned. A copy of the node gets bindings of the same skins, which follow the copies of the
// joints where those were copied too.
class CSGData_SkinBindingSet final : public CSGDataInterface<CSGData_SkinBindingSet>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_SkinBindingSet";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Without bindings.
    static boost::intrusive_ptr<CSGData_SkinBindingSet> Create();

    // False (reported) for null, and for geometry that has a binding already.
    bool AddBinding(const boost::intrusive_ptr<CSGSkinBinding>& spBinding);
    int32_t GetNumBindings() const { return static_cast<int32_t>(m_vecBindings.size()); }
    // Null for a binding that is not there.
    CSGSkinBinding* GetBinding(int32_t nBinding) const;
    // The binding of a geometry, null when it has none.
    CSGSkinBinding* FindBinding(const CSGGeomBinding* pGeomBinding) const;
    // Puts a binding of the same geometry in the place of another. False (reported) when there is no such
    // place.
    bool ReplaceBinding(int32_t nBinding, const boost::intrusive_ptr<CSGSkinBinding>& spBinding);

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    // May be called again when more has been copied: joints that follow an original are rebound.
    bool PostCopy(CSGCopyData* pCopyData) override;
    // Those of the current pose. Null, so that the geometry at rest counts, when nothing of the node's
    // geometry is skinned and when the node's world transform flattens space.
    const CSGBounds* GetDeformedBounds(CSGNode* pNode) const override;

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    std::vector<boost::intrusive_ptr<CSGSkinBinding>> m_vecBindings;
    mutable CSGSkinBounds m_objBounds;
};
