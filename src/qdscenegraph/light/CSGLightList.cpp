#include "qdscenegraph/light/CSGLightList.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/material/CSGLightState.h"
#include "qdscenegraph/streaming/CSGLoadedLink.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"
#include "qdscenegraph/streaming/CSGStreamableSaveState.h"

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
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    QD_CHECK(pStream->CanRead(1, sizeof(int32_t)), false);
    const int32_t nLights = pStream->ReadInt32();
    QD_CHECK(pStream->CanRead(nLights, sizeof(int32_t)), false);
    m_vecLights.resize(static_cast<size_t>(nLights));
    for (int32_t nLight = 0; nLight < nLights; ++nLight)
    {
        QD_CHECK_CALL(pLoadState->ReadChildID(pStream, pOwner, nLight), false);
    }
    return true;
}

bool CSGLightList::WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) const
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pSaveState, false);
    pStream->WriteInt32(GetNumLights());
    for (const auto& spLight : m_vecLights)
    {
        QD_CHECK_CALL(pSaveState->WriteChildID(pStream, spLight.get()), false);
    }
    return true;
}

bool CSGLightList::NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild)
{
    QD_CHECK(nCookie >= 0 && nCookie < GetNumLights(), false);
    return SetLoadedLink(m_vecLights[static_cast<size_t>(nCookie)], pChild);
}

bool CSGLightList::PreWrite(CSGStreamableSaveState* pSaveState) const
{
    for (const auto& spLight : m_vecLights)
    {
        QD_CHECK_CALL(spLight->PreWrite(pSaveState), false);
    }
    return true;
}

bool CSGLightList::PostRead() const
{
    for (const auto& spLight : m_vecLights)
    {
        QD_CHECK_NOT_NULL(spLight, false);
    }
    return true;
}

void CSGLightList::OutputDebugInfo(const CQDString& rIndent) const
{
    for (const auto& spLight : m_vecLights)
    {
        spLight->OutputDebugInfo(rIndent);
    }
}
