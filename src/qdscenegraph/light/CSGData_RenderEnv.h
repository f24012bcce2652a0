// What a node and everything below it is drawn with, besides their own materials.
#pragma once

#include "qdcommon/CColor.h"
#include "qdscenegraph/material/CSGParam.h"
#include "qdscenegraph/node/CSGData.h"

#include <vector>

// Named parameters for shading, and the colour behind everything. The name under which a parameter stands is
// the environment's own, because parameters that come from a file have none.
class CSGData_RenderEnv final : public CSGDataInterface<CSGData_RenderEnv>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_RenderEnv";
    static CSGDataTypeInfo ms_objDataTypeInfo;
    using CParamPtr = boost::intrusive_ptr<CSGParam>;

    // Without parameters, before opaque black.
    static boost::intrusive_ptr<CSGData_RenderEnv> Create();

    const CColor& GetBackgroundColor() const { return m_objBackgroundColor; }
    void SetBackgroundColor(const CColor& rColor) { m_objBackgroundColor = rColor; }

    // False (reported) for null and for a name that is taken.
    bool AddParam(const CQDCompactString& rName, const CParamPtr& spParam);
    int32_t GetNumParams() const { return static_cast<int32_t>(m_vecParams.size()); }
    // In the order in which they were added; the index must be below the number of parameters.
    const CQDCompactString& GetParamName(int32_t nParam) const
    {
        return m_vecParams[static_cast<size_t>(nParam)].strName;
    }
    CSGParam* GetParam(int32_t nParam) const
    {
        return m_vecParams[static_cast<size_t>(nParam)].spParam.get();
    }
    // Null when there is none of the name.
    CSGParam* FindParam(const CQDCompactString& rName) const;

    // A copy has parameters of its own.
    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild,
                            CSGStreamableLoadState* pLoadState) override;
    bool PreWrite(CSGStreamableSaveState* pSaveState) override;
    bool PostRead(CSGStreamableLoadState* pLoadState) override;
    void DropLinks() override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    struct CEntry
    {
        CQDCompactString strName;
        CParamPtr spParam;
    };

    CColor m_objBackgroundColor;
    std::vector<CEntry> m_vecParams;
};
