#include "qdscenegraph/material/CSGData_Material.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

[[gnu::init_priority(CSGDataTypeInfo::ORDER_MATERIAL)]] CSGDataTypeInfo CSGData_Material::ms_objDataTypeInfo(
    CSGData_Material::SG_TYPE_NAME);

namespace
{

const SGStreamableRegistration<CSGData_Material> s_objRegistration(0x4330979BEF722791, 1, 1);

// The one link of the record.
constexpr int32_t COOKIE_MATERIAL = 0;

} // namespace

boost::intrusive_ptr<CSGData_Material> CSGData_Material::Create(CSGMaterial* pMaterial)
{
    QD_CHECK_ARG(pMaterial, nullptr);
    boost::intrusive_ptr<CSGData_Material> spData = CSGMem::Construct<CSGData_Material>();
    return spData && spData->SetMaterial(pMaterial) ? spData : nullptr;
}

bool CSGData_Material::SetMaterial(CSGMaterial* pMaterial)
{
    QD_CHECK_ARG(pMaterial, false);
    QD_CHECK(m_spMaterial == 0, false);
    m_spMaterial = pMaterial;
    return true;
}

bool CSGData_Material::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK_OR_RETURN(pLoadState->ReadChildID(pStream, this, COOKIE_MATERIAL), "Call %s failed",
                       "pLoadState->ReadChildID(pStream,this,0)", false);
    QD_CHECK_CALL(pStream->ReadString(m_strOverrideMaterialName), false);
    return true;
}

bool CSGData_Material::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    QD_CHECK_OR_RETURN(pSaveState->WriteChildID(pStream, m_spMaterial.get()), "Call %s failed",
                       "pSaveState->WriteChildID(pStream,m_spMaterial.get())", false);
    pStream->WriteString(m_strOverrideMaterialName);
    return true;
}

bool CSGData_Material::NotifyObjectLoaded(int32_t, CSGStreamable* pChild, CSGStreamableLoadState*)
{
    auto* pMaterial = SGStreamableCast<CSGMaterial>(pChild);
    QD_CHECK_NOT_NULL(pMaterial, false);
    m_spMaterial = pMaterial;
    return true;
}

bool CSGData_Material::PreWrite(CSGStreamableSaveState* pSaveState)
{
    QD_CHECK_ARG(pSaveState, false);
    if (pSaveState->HasObject(this))
    {
        Log(QD_SCENEGRAPH, LOG_WARNING, "Cycle detected at (CSGData_Material*)0x%08llx", LogAddress(this));
        return true;
    }
    QD_CHECK_CALL(CSGStreamable::PreWrite(pSaveState), false);
    QD_CHECK_NOT_NULL(m_spMaterial, false);
    QD_CHECK_CALL(m_spMaterial->PreWrite(pSaveState), false);
    return true;
}

bool CSGData_Material::PostRead(CSGStreamableLoadState*)
{
    QD_CHECK_NOT_NULL(m_spMaterial, false);
    return true;
}

void CSGData_Material::DropLinks() { m_spMaterial.reset(); }

void CSGData_Material::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_Material: 0x%08llX", rIndent, LogAddress(this));
    if (!m_strOverrideMaterialName.empty())
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%s  Override Material: %s", rIndent, m_strOverrideMaterialName);
        return;
    }
    Log(QD_SCENEGRAPH, LOG_INFO, "%s  Material:", rIndent);
    if (m_spMaterial)
    {
        m_spMaterial->OutputDebugInfo(rIndent + "    ");
    }
}
