// How a node is drawn: flags that only the renderer interprets, and whether the node is seen at all.
#pragma once

#include "qdscenegraph/node/CSGData.h"

#include <bit>

class CSGData_RenderState : public CSGDataInterface<CSGData_RenderState>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_RenderState";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    // Bits of the first word.
    enum EFlag : uint32_t
    {
        FLAG_DOUBLE_SIDED = 0x1,
        FLAG_DO_NOT_CULL = 0x2,
        FLAG_INVISIBLE = 0x4
    };

    // The node's render state, made and added when it has none; null on failure.
    static boost::intrusive_ptr<CSGData_RenderState> GetOrCreateFromNode(CSGNode* pNode);

    bool HasFlag(EFlag eFlag) const { return (m_arrWords[0] & eFlag) != 0; }
    void SetFlag(EFlag eFlag, bool bSet)
    {
        m_arrWords[0] = bSet ? m_arrWords[0] | eFlag : m_arrWords[0] & ~eFlag;
    }
    // Added to the depth of what is drawn, in the units of the renderer.
    float GetDepthBias() const { return std::bit_cast<float>(m_arrWords[1]); }
    void SetDepthBias(float fDepthBias) { m_arrWords[1] = std::bit_cast<uint32_t>(fDepthBias); }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Copy::ms_objInstance; }
    boost::intrusive_ptr<CSGData> CreateCopy(CSGCopyData* pCopyData) const override;
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    uint32_t m_arrWords[2] = {0, 0}; // the flags, the bits of the depth bias
};
