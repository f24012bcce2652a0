#include "qdscenegraph/object/CSGMem.h"

CLogSource QD_SCENEGRAPH("QD_SCENEGRAPH");

CMemPool& CSGMem::GetPool()
{
    static CMemPool& s_rPool = CMemPool::GetPool("SG");
    return s_rPool;
}

void CSGMem::Destroy(CSGObject* pObject)
{
    QD_CHECK_ARG(pObject, );
    const size_t nSize = pObject->GetObjectSize();
    void* pBlock = dynamic_cast<void*>(pObject);
    pObject->~CSGObject();
    GetPool().Free(pBlock, nSize);
}
