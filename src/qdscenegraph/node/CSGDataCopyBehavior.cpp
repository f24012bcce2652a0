#include "qdscenegraph/node/CSGDataCopyBehavior.h"

#include "qdscenegraph/node/CSGData.h"

const CSGDCBhvr_Copy CSGDCBhvr_Copy::ms_objInstance;
const CSGDCBhvr_Share CSGDCBhvr_Share::ms_objInstance;
const CSGDCBhvr_Ignore CSGDCBhvr_Ignore::ms_objInstance;

bool CSGDCBhvr_Copy::CopyData(CSGData* pData, CSGCopyData* pCopyData,
                              boost::intrusive_ptr<CSGData>& rspCopy) const
{
    rspCopy = pData->CreateCopy(pCopyData);
    return rspCopy != nullptr;
}

bool CSGDCBhvr_Share::CopyData(CSGData* pData, CSGCopyData*, boost::intrusive_ptr<CSGData>& rspCopy) const
{
    rspCopy = pData;
    return true;
}

bool CSGDCBhvr_Ignore::CopyData(CSGData*, CSGCopyData*, boost::intrusive_ptr<CSGData>& rspCopy) const
{
    rspCopy = nullptr;
    return true;
}
