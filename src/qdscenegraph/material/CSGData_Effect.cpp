#include "qdscenegraph/material/CSGData_Effect.h"

#include "qdscenegraph/node/CSGNode.h"

#include <algorithm>

[[gnu::init_priority(CSGDataTypeInfo::ORDER_EFFECT)]] CSGDataTypeInfo CSGData_Effect::ms_objDataTypeInfo(
    CSGData_Effect::SG_TYPE_NAME);

namespace
{
const SGStreamableRegistration<CSGData_Effect> s_objRegistration(0xD342C8C09DBAB24B, 1, 1);
}

boost::intrusive_ptr<CSGData_Effect> CSGData_Effect::Create(const CSGEffectPtr& spEffect)
{
    boost::intrusive_ptr<CSGData_Effect> spEffectData = CSGMem::Construct<CSGData_Effect>();
    QD_CHECK_CREATED(spEffectData, nullptr);
    QD_CHECK_CALL(spEffectData->SetPrimaryEffect(spEffect), nullptr);
    return spEffectData;
}

bool CSGData_Effect::SetPrimaryEffect(const CSGEffectPtr& spEffect)
{
    QD_CHECK_ARG(spEffect, false);
    QD_CHECK(m_spPrimaryEffect == 0, false);
    m_spPrimaryEffect = spEffect;
    return true;
}

bool CSGData_Effect::AddSurfaceEffect(const CSGEffectPtr& spEffect)
{
    QD_CHECK_ARG(spEffect, false);
    if (std::ranges::find(m_listSurfaceEffects, spEffect) != m_listSurfaceEffects.end())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Cannot add effect 0x%08llX to data - it is already in the data.",
            LogAddress(spEffect.get()));
        return false;
    }
    m_listSurfaceEffects.push_back(spEffect);
    return true;
}

bool CSGData_Effect::RemoveSurfaceEffect(const CSGEffectPtr& spEffect)
{
    QD_CHECK_ARG(spEffect, false);
    const auto itEffect = std::ranges::find(m_listSurfaceEffects, spEffect);
    if (itEffect == m_listSurfaceEffects.end())
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Data does not contain effect 0x%08llX", LogAddress(spEffect.get()));
        return false;
    }
    m_listSurfaceEffects.erase(itEffect);
    return true;
}

boost::intrusive_ptr<CSGData> CSGData_Effect::CreateCopy(CSGCopyData*) const
{
    boost::intrusive_ptr<CSGData_Effect> spCopy = CSGMem::Construct<CSGData_Effect>();
    if (spCopy)
    {
        spCopy->m_spPrimaryEffect = m_spPrimaryEffect;
        spCopy->m_listSurfaceEffects = m_listSurfaceEffects;
    }
    return spCopy;
}

bool CSGData_Effect::NotifyAddedToNode(CSGNode* pObjNode)
{
    QD_CHECK(GetNode() == 0, false);
    QD_CHECK_CALL(pObjNode->SetRenderEffectsData(this), false);
    m_pNode = pObjNode;
    return true;
}

bool CSGData_Effect::NotifyRemovedFromNode(CSGNode* pObjNode)
{
    m_pNode = nullptr;
    QD_CHECK_OR_RETURN(pObjNode->ClearRenderEffectsData(), "Call %s failed",
                       "pObjNode->ClearRenderEffectsData(this)", false);
    return true;
}

bool CSGData_Effect::NotifyNodeDestroyed(CSGNode*)
{
    m_pNode = nullptr;
    return true;
}

bool CSGData_Effect::ReadFromStream(CStream*, CSGStreamableLoadState*)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Implement me!");
    return false;
}

bool CSGData_Effect::WriteToStream(CStream*, CSGStreamableSaveState*)
{
    Log(QD_SCENEGRAPH, LOG_WARNING, "Implement me!");
    return false;
}

void CSGData_Effect::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sCSGData_Effect: 0x%08llX Surface Effects: %d", rIndent, LogAddress(this),
        static_cast<int>(m_listSurfaceEffects.size()));
    if (m_spPrimaryEffect)
    {
        m_spPrimaryEffect->OutputDebugInfo(rIndent + "  ");
    }
    for (const CSGEffectPtr& spEffect : m_listSurfaceEffects)
    {
        spEffect->OutputDebugInfo(rIndent + "  ");
    }
}
