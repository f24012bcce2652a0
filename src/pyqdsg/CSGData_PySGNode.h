// The link from a node back to its Python wrapper: the same node is always the same Python object.
#pragma once

#include "qdscenegraph/node/CSGData.h"

struct PySGNode;

// The wrapper owns its node, the node only knows its wrapper; the wrapper takes this attachment off when it
// goes. Neither copied nor saved.
class CSGData_PySGNode : public CSGDataInterface<CSGData_PySGNode>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGData_PySGNode";
    static CSGDataTypeInfo ms_objDataTypeInfo;

    static boost::intrusive_ptr<CSGData_PySGNode> Create(PySGNode* pyNode);

    // Borrowed.
    PySGNode* GetPyNode() const { return m_pyNode; }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Ignore::ms_objInstance; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    void OutputDebugInfo(const CQDString& rIndent) const override;

  private:
    PySGNode* m_pyNode = nullptr;
};

// The module's exported pair, for code that holds the attachment by its own class. Null is ignored.
[[gnu::visibility("default")]] void intrusive_ptr_add_ref(CSGData_PySGNode* pData);
[[gnu::visibility("default")]] void intrusive_ptr_release(CSGData_PySGNode* pData);
