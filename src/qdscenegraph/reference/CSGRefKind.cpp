#include "qdscenegraph/reference/CSGRefKind.h"

#include "qdcommon/CStream.h"

namespace
{

const SGStreamableRegistration<CSGRef_Target> s_objTarget(0x727EB8E7E64F4C62, 1, 1);
const SGStreamableRegistration<CSGRef_DataByType> s_objDataByType(0x6345907D1FBF643D, 1, 1);
const SGStreamableRegistration<CSGRef_DescendantNodeByGlobalName> s_objDescendantNodeByGlobalName(
    0x53EF9D2DAE8373E6, 1, 1);
const SGStreamableRegistration<CSGRef_MaterialByGlobalName> s_objMaterialByGlobalName(0x6B798B97259B6060, 1,
                                                                                      1);
const SGStreamableRegistration<CSGRef_MaterialParam> s_objMaterialParam(0xE4EBF46414F33B86, 1, 1);
const SGStreamableRegistration<CSGRef_TransformByName> s_objTransformByName(0x212481763A273D6A, 1, 1);
const SGStreamableRegistration<CSGATFRef_Target> s_objAnimatedTarget(0x78B54791CB8E774A, 1, 1);
const SGStreamableRegistration<CSGATFRef_DataByType> s_objAnimatedDataByType(0x25A67BB0C4AED27A, 1, 1);
const SGStreamableRegistration<CSGATFRef_DescendantNodeByGlobalName> s_objAnimatedDescendantNodeByGlobalName(
    0x2A8DBF86D323CBD0, 1, 1);
const SGStreamableRegistration<CSGATFRef_ChildNodeByLocalName> s_objAnimatedChildNodeByLocalName(
    0xA3FBC46C6F5A0955, 1, 1);
const SGStreamableRegistration<CSGATFRef_MaterialByGlobalName> s_objAnimatedMaterialByGlobalName(
    0x808F3798AC1B7571, 1, 1);
const SGStreamableRegistration<CSGATFRef_MaterialParam> s_objAnimatedMaterialParam(0xB0D1456DDF40E7F9, 1, 1);
const SGStreamableRegistration<CSGATFRef_TransformByName> s_objAnimatedTransformByName(0x41AF5847C5D03252, 1,
                                                                                       1);

// False when the stream does not hold the whole field.
bool ReadField(CStream* pStream, CQDCompactString& rField) { return pStream->ReadString(rField); }
void WriteField(CStream* pStream, const CQDCompactString& rField) { pStream->WriteString(rField); }
CQDString ToText(const CQDCompactString& rField) { return "'" + CQDString(rField.GetView()) + "'"; }

// Any number is read: one that means nothing finds nothing.
template <class ENUM>
bool ReadField(CStream* pStream, ENUM& rField)
{
    const bool bThere = pStream->CanRead(1, sizeof(int32_t));
    rField = static_cast<ENUM>(pStream->ReadInt32());
    return bThere;
}
template <class ENUM>
void WriteField(CStream* pStream, const ENUM& rField)
{
    pStream->WriteInt32(rField);
}
CQDString ToText(ETarget eTarget) { return CSGATFTarget::GetName(eTarget); }
CQDString ToText(CSGMaterial::EParam eParam) { return CSGMaterial::GetParamName(eParam); }

} // namespace

template <class FIND, class BASE>
const CSGTypeInfo<CSGRef> CSGRefKind<FIND, BASE>::ms_objTypeInfo(SG_TYPE_NAME);

template <class FIND, class BASE>
boost::intrusive_ptr<CSGRefKind<FIND, BASE>> CSGRefKind<FIND, BASE>::Create(const CField& rField)
{
    boost::intrusive_ptr<CSGRefKind> spRef = CSGMem::Construct<CSGRefKind>();
    if (spRef)
    {
        spRef->m_objField = rField;
    }
    return spRef;
}

template <class FIND, class BASE>
CSGStreamable* CSGRefKind<FIND, BASE>::Resolve(CSGStreamable* pFrom, CSGRefContext* pContext) const
{
    return pFrom != nullptr ? FIND::Find(pFrom, m_objField, pContext) : nullptr;
}

template <class FIND, class BASE>
ETarget CSGRefKind<FIND, BASE>::GetTarget() const
{
    if constexpr (std::is_same_v<CField, ETarget>)
    {
        return m_objField;
    }
    else
    {
        return CSGRef::GetTarget();
    }
}

template <class FIND, class BASE>
bool CSGRefKind<FIND, BASE>::ReadFromStream(CStream* pStream, CSGStreamableLoadState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_CALL(ReadField(pStream, m_objField), false);
    return true;
}

template <class FIND, class BASE>
bool CSGRefKind<FIND, BASE>::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    WriteField(pStream, m_objField);
    return true;
}

template <class FIND, class BASE>
void CSGRefKind<FIND, BASE>::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%s%s: 0x%08llX %s", rIndent, SG_TYPE_NAME, LogAddress(this),
        ToText(m_objField));
}

template class CSGRefKind<CSGRefFind_Target, CSGRef>;
template class CSGRefKind<CSGRefFind_DataByType, CSGRef>;
template class CSGRefKind<CSGRefFind_DescendantNodeByGlobalName, CSGRef>;
template class CSGRefKind<CSGRefFind_MaterialByGlobalName, CSGRef>;
template class CSGRefKind<CSGRefFind_MaterialParam, CSGRef>;
template class CSGRefKind<CSGRefFind_TransformByName, CSGRef>;
template class CSGRefKind<CSGRefFind_Target, CSGATFRef>;
template class CSGRefKind<CSGRefFind_DataByType, CSGATFRef>;
template class CSGRefKind<CSGRefFind_DescendantNodeByGlobalName, CSGATFRef>;
template class CSGRefKind<CSGRefFind_ChildNodeByLocalName, CSGATFRef>;
template class CSGRefKind<CSGRefFind_MaterialByGlobalName, CSGATFRef>;
template class CSGRefKind<CSGRefFind_MaterialParam, CSGATFRef>;
template class CSGRefKind<CSGRefFind_TransformByName, CSGATFRef>;
