// The camera that stands on a node.
#pragma once

#include "qdscenegraph/camera/CSGCamera.h"
#include "qdscenegraph/node/CSGData.h"

// Copies of a node share it.
class CSGData_Camera final : public CSGDataInterface<CSGData_Camera>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_Camera";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Null (reported) without a camera.
    static boost::intrusive_ptr<CSGData_Camera> Create(const boost::intrusive_ptr<CSGCamera>& spCamera);

    // Never null in camera data that was created or loaded.
    CSGCamera* GetCamera() const { return m_spCamera.get(); }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Share::ms_objInstance; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    enum ECookie : int32_t
    {
        COOKIE_CAMERA = 0
    };

    boost::intrusive_ptr<CSGCamera> m_spCamera;
};
