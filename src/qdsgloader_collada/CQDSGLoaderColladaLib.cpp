#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include "qdsgloader_collada/CCDS_FloatArray.h"
#include "qdsgloader_collada/CCDS_IDRefArray.h"
#include "qdsgloader_collada/CCDS_StringArray.h"
#include "qdsgloader_collada/CDAEErrorHandler.h"

CLogSource QD_COLLADA("QD_COLLADA");

namespace
{

// Takes back at the end of the process what it did, in the opposite order.
class CLibrary
{
  public:
    CLibrary()
    {
        for (CColladaDataSourceType* pType : m_arrTypes)
        {
            CColladaDataSourceType::RegisterDataSourceType(pType);
        }
    }
    CLibrary(const CLibrary&) = delete;
    CLibrary& operator=(const CLibrary&) = delete;
    ~CLibrary()
    {
        for (CColladaDataSourceType* pType : m_arrTypes)
        {
            CColladaDataSourceType::UnregisterDataSourceType(pType);
        }
    }

  private:
    CColladaDataSourceType* m_arrTypes[3] = {&CCDS_FloatArray::ms_objType, &CCDS_StringArray::ms_objType,
                                             &CCDS_IDRefArray::ms_objType};
    CDAEErrorHandler m_objErrorHandler;
};

} // namespace

bool CQDSGLoaderColladaLib::InitLibrary()
{
    static const CLibrary s_objLibrary;
    return true;
}
