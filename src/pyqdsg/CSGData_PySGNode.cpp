#include "pyqdsg/PySupport.h"

#include "pyqdsg/CSGData_PySGNode.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_PYSGNODE)]] CSGDataTypeInfo CSGData_PySGNode::ms_objDataTypeInfo(
    CSGData_PySGNode::SG_TYPE_NAME);

boost::intrusive_ptr<CSGData_PySGNode> CSGData_PySGNode::Create(PySGNode* pyNode)
{
    QD_CHECK_ARG(pyNode, nullptr);
    boost::intrusive_ptr<CSGData_PySGNode> spData = CSGMem::Construct<CSGData_PySGNode>();
    QD_CHECK_CREATED(spData, nullptr);
    spData->m_pyNode = pyNode;
    return spData;
}

bool CSGData_PySGNode::ReadFromStream(CStream*, CSGStreamableLoadState*)
{
    Log(PY_QDSG, LOG_WARNING, "Implement me!");
    return false;
}

bool CSGData_PySGNode::WriteToStream(CStream*, CSGStreamableSaveState*)
{
    Log(PY_QDSG, LOG_WARNING, "Implement me!");
    return false;
}

void CSGData_PySGNode::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(PY_QDSG, LOG_INFO, "%sCSGData_PySGNode: 0x%08llX - Python object: 0x%08llX", rIndent,
        LogAddress(this), LogAddress(m_pyNode));
}

void intrusive_ptr_add_ref(CSGData_PySGNode* pData)
{
    intrusive_ptr_add_ref(static_cast<const CSGObject*>(pData));
}

void intrusive_ptr_release(CSGData_PySGNode* pData)
{
    intrusive_ptr_release(static_cast<const CSGObject*>(pData));
}
