#include "qdscenegraph/transform/CSGXFrm_Pair.h"

#include "qdcommon/CStream.h"

const CSGTypeInfo<CSGTransform> CSGXFrm_Pair::ms_objTypeInfo(CSGXFrm_Pair::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGXFrm_Pair> s_objRegistration(0x5DFF482DEC18A07B, 1, 1);
}

boost::intrusive_ptr<CSGXFrm_Pair> CSGXFrm_Pair::Create(const CTransformPtr& spFirst,
                                                        const CTransformPtr& spSecond)
{
    boost::intrusive_ptr<CSGXFrm_Pair> spPair = CSGMem::Construct<CSGXFrm_Pair>();
    QD_CHECK_CREATED(spPair, nullptr);
    return spPair->Append(spFirst.get()) && spPair->Append(spSecond.get()) ? spPair : nullptr;
}

CSGTransform::CTransformPtr CSGXFrm_Pair::CreateCopy(CCopies& rCopies) const
{
    boost::intrusive_ptr<CSGXFrm_Pair> spCopy = CSGMem::Construct<CSGXFrm_Pair>();
    return spCopy && spCopy->AppendCopies(*this, rCopies) ? spCopy : nullptr;
}

bool CSGXFrm_Pair::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_CALL(CSGTransform::ReadFromStream(pStream, pLoadState), false);
    return ReadTransforms(2, pStream, pLoadState);
}

bool CSGXFrm_Pair::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_CALL(CSGTransform::WriteToStream(pStream, pSaveState), false);
    return WriteTransforms(pStream, pSaveState);
}
