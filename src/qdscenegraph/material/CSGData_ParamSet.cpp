#include "qdscenegraph/material/CSGData_ParamSet.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_PARAM_SET)]] CSGDataTypeInfo CSGData_ParamSet::ms_objDataTypeInfo(
    CSGData_ParamSet::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_ParamSet> s_objRegistration(0xB394774AEE4F8AB1, 1, 1);
}

boost::intrusive_ptr<CSGData_ParamSet> CSGData_ParamSet::Create(const CSGParamSetPtr& spParamSet)
{
    QD_CHECK_ARG(spParamSet, nullptr);
    boost::intrusive_ptr<CSGData_ParamSet> spData = CSGMem::Construct<CSGData_ParamSet>();
    if (spData)
    {
        spData->m_spParamSet = spParamSet;
    }
    return spData;
}

boost::intrusive_ptr<CSGData> CSGData_ParamSet::CreateCopy(CSGCopyData*) const
{
    const CSGParamSetPtr spParamSet = CSGParamSet::Create();
    QD_CHECK_CREATED(spParamSet, nullptr);
    QD_CHECK_CALL(spParamSet->CopyShallow(m_spParamSet), nullptr);
    return Create(spParamSet);
}

bool CSGData_ParamSet::ReadFromStream(CStream*, CSGStreamableLoadState*)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Implement me!");
    return false;
}

bool CSGData_ParamSet::WriteToStream(CStream*, CSGStreamableSaveState*)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Implement me!");
    return false;
}

void CSGData_ParamSet::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_ParamSet: 0x%08llX", rIndent, LogAddress(this));
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Params:", rIndent);
    if (m_spParamSet)
    {
        m_spParamSet->OutputDebugInfo(rIndent + "    ");
    }
}
