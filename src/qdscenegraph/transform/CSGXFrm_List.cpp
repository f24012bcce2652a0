#include "qdscenegraph/transform/CSGXFrm_List.h"

#include "qdcommon/CStream.h"

const CSGTypeInfo<CSGTransform> CSGXFrm_List::ms_objTypeInfo(CSGXFrm_List::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGXFrm_List> s_objRegistration(0x885BCED2374C8384, 1, 1);
}

boost::intrusive_ptr<CSGXFrm_List> CSGXFrm_List::Create() { return CSGMem::Construct<CSGXFrm_List>(); }

boost::intrusive_ptr<CSGXFrm_List> CSGXFrm_List::Create(std::span<const CTransformPtr> arrTransforms)
{
    boost::intrusive_ptr<CSGXFrm_List> spList = Create();
    QD_CHECK_CREATED(spList, nullptr);
    for (const CTransformPtr& spTransform : arrTransforms)
    {
        QD_CHECK_CALL(spList->AddTransform(spTransform.get()), nullptr);
    }
    return spList;
}

CSGTransform::CTransformPtr CSGXFrm_List::CreateCopy(CCopies& rCopies) const
{
    boost::intrusive_ptr<CSGXFrm_List> spCopy = Create();
    return spCopy && spCopy->AppendCopies(*this, rCopies) ? spCopy : nullptr;
}

bool CSGXFrm_List::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGTransform::ReadFromStream(pStream, pLoadState), false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nCount = pStream->ReadInt32();
    return ReadTransforms(nCount, pStream, pLoadState);
}

bool CSGXFrm_List::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTransform::WriteToStream(pStream, pSaveState), false);
    pStream->WriteInt32(GetNumTransforms());
    return WriteTransforms(pStream, pSaveState);
}
