#include "qdscenegraph/light/CSGLightList.h"

#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/streaming/CSGLoadedLinks.h"

bool CSGLightList::AddLight(const boost::intrusive_ptr<CSGLight>& spLight)
{
    QD_CHECK_ARG(spLight, false);
    m_vecLights.push_back(spLight);
    return true;
}

CSGLight* CSGLightList::GetLight(int32_t nLight) const
{
    return nLight >= 0 && nLight < GetNumLights() ? m_vecLights[static_cast<size_t>(nLight)].get() : nullptr;
}

void CSGLightList::SetupLightStates(const CTransform3& rWorld, std::vector<CSGLightState>& rvecStates) const
{
    for (const auto& spLight : m_vecLights)
    {
        spLight->SetupLightState(rvecStates.emplace_back(), rWorld);
    }
}

bool CSGLightList::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState, CSGStreamable* pOwner)
{
    return ReadLinks(m_vecLights, pStream, pLoadState, pOwner);
}

bool CSGLightList::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) const
{
    return WriteLinks(m_vecLights, pStream, pSaveState);
}

bool CSGLightList::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild)
{
    return SetLoadedLink(m_vecLights, nCookie, pChild);
}

bool CSGLightList::PreWrite(CSGStreamableSaveState* pSaveState) const
{
    return PreWriteLinks(m_vecLights, pSaveState);
}

bool CSGLightList::PostRead() const { return HasAllLinks(m_vecLights); }

void CSGLightList::OutputDebugInfo(const CQDString& rIndent) const
{
    for (const auto& spLight : m_vecLights)
    {
        spLight->OutputDebugInfo(rIndent);
    }
}
