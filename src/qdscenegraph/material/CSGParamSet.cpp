#include "qdscenegraph/material/CSGParamSet.h"

#include "qdscenegraph/material/CSGParamTmpl.h"

CSGParamSetPtr CSGParamSet::Create() { return CSGMem::Construct<CSGParamSet>(); }

bool CSGParamSet::AddParam(const CSGParamPtr& spObjParam)
{
    QD_CHECK_ARG(spObjParam, false);
    const CQDString rStrName(spObjParam->GetName().GetView());
    if (m_mapNameToIndex.contains(rStrName))
    {
        QD_CHECK_FAILED("%s is false", "m_mapNameToIndex.find(rStrName) == m_mapNameToIndex.end()");
        Log(QD_SCENEGRAPH, LOG_ERROR, "Already had param named '%s'", rStrName);
        return false;
    }
    QD_CHECK_CALL(spObjParam->NotifyAddedToParamSet(this), false);
    const int32_t nIndex = m_objParams.Add(spObjParam);
    if (nIndex < 0)
    {
        spObjParam->NotifyRemovedFromParamSet(this);
        return false;
    }
    m_mapNameToIndex.emplace(rStrName, nIndex);
    return true;
}

bool CSGParamSet::RemoveParam(const CSGParamPtr& spObjParam)
{
    QD_CHECK_ARG(spObjParam, false);
    const CSGParamPtr spRemoved = spObjParam; // the argument may be the set's own pointer
    const auto itIndex = m_mapNameToIndex.find(spRemoved->GetName().GetView());
    QD_CHECK(itIndex != m_mapNameToIndex.end(), false);
    const int32_t nIndex = itIndex->second;
    QD_CHECK_OR_RETURN(m_objParams.IsInUse(nIndex), "%s is false", "m_objParams.IsValid(nIndex)", false);
    QD_CHECK_OR_RETURN(m_objParams[nIndex] == spRemoved, "%s is false",
                       "m_objParams.GetElement(nIndex) == spObjParam", false);
    m_mapNameToIndex.erase(itIndex);
    m_objParams.Remove(nIndex);
    QD_CHECK_OR_RETURN(spRemoved->NotifyRemovedFromParamSet(this), "Call %s failed",
                       "spObjParam->NotifyRemovedFromParamSet(this)", false);
    return true;
}

CSGParamPtr CSGParamSet::GetParam(std::string_view strName) const
{
    for (const CSGParamSet* pParamSet = this; pParamSet != nullptr;
         pParamSet = pParamSet->m_spObjBaseParams.get())
    {
        const auto itIndex = pParamSet->m_mapNameToIndex.find(strName);
        if (itIndex != pParamSet->m_mapNameToIndex.end())
        {
            const int32_t nIndex = itIndex->second;
            QD_CHECK_OR_RETURN(pParamSet->m_objParams.IsInUse(nIndex), "%s is false",
                               "m_objParams.IsValid(nIndex)", nullptr);
            return pParamSet->m_objParams[nIndex];
        }
    }
    return nullptr;
}

bool CSGParamSet::SetBaseParams(const CParamSetPtr& spObjBaseParams)
{
    for (const CSGParamSet* pBase = spObjBaseParams.get(); pBase != nullptr;
         pBase = pBase->m_spObjBaseParams.get())
    {
        QD_CHECK(pBase != this, false);
    }
    m_spObjBaseParams = spObjBaseParams;
    return true;
}

bool CSGParamSet::CopyShallow(const CParamSetPtr& spParamSet)
{
    QD_CHECK_ARG(spParamSet, false);
    for (int32_t nIndex = 0; nIndex < spParamSet->m_objParams.GetSize(); ++nIndex)
    {
        if (!spParamSet->m_objParams.IsInUse(nIndex))
        {
            continue;
        }
        const CSGParamPtr spParam = spParamSet->m_objParams[nIndex];
        QD_CHECK_NOT_NULL(spParam, false);
        const CSGParamPtr spParamCopy = spParam->CreateCopy();
        QD_CHECK_CREATED(spParamCopy, false);
        QD_CHECK_CALL(AddParam(spParamCopy), false);
    }
    return true;
}

bool CSGParamSet::GetSamplers(std::vector<CSGSamplerPtr>& rListOutput) const
{
    for (int32_t nIndex = 0; nIndex < m_objParams.GetSize(); ++nIndex)
    {
        if (!m_objParams.IsInUse(nIndex) || m_objParams[nIndex]->GetType() != CSGParam::PARAM_TYPE_SAMPLER)
        {
            continue;
        }
        if (const CSGSamplerPtr& spSampler = m_objParams[nIndex]->GetValueAs<CSGSamplerPtr>())
        {
            rListOutput.push_back(spSampler);
        }
    }
    if (m_spObjBaseParams)
    {
        QD_CHECK_CALL(m_spObjBaseParams->GetSamplers(rListOutput), false);
    }
    return true;
}

void CSGParamSet::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO, "%sParam Set (0x%08llX):", rIndent, LogAddress(this));
    for (int32_t nIndex = 0; nIndex < m_objParams.GetSize(); ++nIndex)
    {
        if (m_objParams.IsInUse(nIndex))
        {
            m_objParams[nIndex]->OutputDebugInfo(rIndent + "  ");
        }
    }
    if (m_spObjBaseParams)
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%s  Base Params:", rIndent);
        m_spObjBaseParams->OutputDebugInfo(rIndent + "    ");
    }
}
