// The geometry that a node carries.
#pragma once

#include "qdscenegraph/geometry/CSGGeomList.h"
#include "qdscenegraph/node/CSGData.h"

// Copies of a node share it.
class CSGData_Geometry final : public CSGDataInterface<CSGData_Geometry>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_Geometry";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Null (reported) without a list.
    static boost::intrusive_ptr<CSGData_Geometry> Create(const boost::intrusive_ptr<CSGGeomList>& spGeomList);

    // Never null in geometry that was created or loaded.
    CSGGeomList* GetGeomList() const { return m_spGeomList.get(); }
    const CSGEditStamp& GetEditStamp() const { return m_objEditStamp; }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Share::ms_objInstance; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const override;
    // A vertex buffer counts once, however many bindings use it; a binding is a geometry.
    void AddGeomStats(CSGGeomStats& rStats) const override;

  private:
    enum ECookie : int32_t
    {
        COOKIE_GEOM_LIST = 0
    };

    boost::intrusive_ptr<CSGGeomList> m_spGeomList;
    CSGEditStamp m_objEditStamp; // tells this attachment from every other
};
