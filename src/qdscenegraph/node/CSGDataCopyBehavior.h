// What becomes of an attachment when its node is copied or saved.
#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>

class CSGCopyData;
class CSGData;

class CSGDataCopyBehavior
{
  public:
    virtual ~CSGDataCopyBehavior() = default;

    // The attachment for the copied node; false on failure, null when the copy has none.
    virtual bool CopyData(CSGData* pData, CSGCopyData* pCopyData,
                          boost::intrusive_ptr<CSGData>& rspCopy) const = 0;
    // Whether the attachment is saved.
    virtual bool IsKept() const = 0;
};

// The copy gets an attachment of its own (CSGData::CreateCopy).
class CSGDCBhvr_Copy : public CSGDataCopyBehavior
{
  public:
    static const CSGDCBhvr_Copy ms_objInstance;

    bool CopyData(CSGData* pData, CSGCopyData* pCopyData,
                  boost::intrusive_ptr<CSGData>& rspCopy) const override;
    bool IsKept() const override { return true; }
};

// Original and copy hold the same attachment.
class CSGDCBhvr_Share : public CSGDataCopyBehavior
{
  public:
    static const CSGDCBhvr_Share ms_objInstance;

    bool CopyData(CSGData* pData, CSGCopyData* pCopyData,
                  boost::intrusive_ptr<CSGData>& rspCopy) const override;
    bool IsKept() const override { return true; }
};

// The attachment is neither copied nor saved.
class CSGDCBhvr_Ignore : public CSGDataCopyBehavior
{
  public:
    static const CSGDCBhvr_Ignore ms_objInstance;

    bool CopyData(CSGData* pData, CSGCopyData* pCopyData,
                  boost::intrusive_ptr<CSGData>& rspCopy) const override;
    bool IsKept() const override { return false; }
};
