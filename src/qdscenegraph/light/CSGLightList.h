// A list of lights: what the attachments that hold lights have in common.
#pragma once

#include "qdscenegraph/light/CSGLight.h"
#include "qdscenegraph/node/CSGData.h"

#include <vector>

// A light may stand in it several times.
class CSGLightList
{
  public:
    // False (reported) for null.
    bool AddLight(const boost::intrusive_ptr<CSGLight>& spLight);
    int32_t GetNumLights() const { return static_cast<int32_t>(m_vecLights.size()); }
    // Null for a light that is not there.
    CSGLight* GetLight(int32_t nLight) const;
    // Appends the state of each light, in order, as it shines from a node with the world transform.
    void SetupLightStates(const CTransform3& rWorld, std::vector<CSGLightState>& rvecStates) const;

    // The streaming steps of the attachment that owns the list; the cookie of a light is its index.
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState, CSGStreamable* pOwner);
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) const;
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild);
    bool PreWrite(CSGStreamableSaveState* pSaveState) const;
    bool PostRead() const;
    void DropLinks() { m_vecLights.clear(); }
    void OutputDebugInfo(const CQDString& rIndent) const;

  private:
    std::vector<boost::intrusive_ptr<CSGLight>> m_vecLights;
};

// Base of an attachment T that is a list of lights. Copies of a node share it.
template <class T>
class CSGLightListData : public CSGDataInterface<T>
{
  public:
    // Without lights.
    static boost::intrusive_ptr<T> Create() { return CSGMem::Construct<T>(); }

    bool AddLight(const boost::intrusive_ptr<CSGLight>& spLight) { return m_objLights.AddLight(spLight); }
    int32_t GetNumLights() const { return m_objLights.GetNumLights(); }
    CSGLight* GetLight(int32_t nLight) const { return m_objLights.GetLight(nLight); }
    void SetupLightStates(const CTransform3& rWorld, std::vector<CSGLightState>& rvecStates) const
    {
        m_objLights.SetupLightStates(rWorld, rvecStates);
    }

    const CSGDataCopyBehavior& GetCopyBehavior() const override { return CSGDCBhvr_Share::ms_objInstance; }
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override
    {
        return m_objLights.ReadFromStream(pStream, pLoadState, this);
    }
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override
    {
        return m_objLights.WriteToStream(pStream, pSaveState);
    }
    bool NotifyObjectLoaded(int32_t nCookie, CSGStreamable* pChild, CSGStreamableLoadState*) override
    {
        return m_objLights.NotifyObjectLoaded(nCookie, pChild);
    }
    bool PreWrite(CSGStreamableSaveState* pSaveState) override
    {
        return CSGData::PreWrite(pSaveState) && m_objLights.PreWrite(pSaveState);
    }
    bool PostRead(CSGStreamableLoadState*) override { return m_objLights.PostRead(); }
    void DropLinks() override { m_objLights.DropLinks(); }
    void OutputDebugInfo(const CQDString& rIndent) const override
    {
        Log(QD_SCENEGRAPH, LOG_INFO, "%s%s: 0x%08llX - Lights: %d", rIndent, T::SG_TYPE_NAME,
            LogAddress(this), GetNumLights());
        m_objLights.OutputDebugInfo(rIndent + "    ");
    }

  private:
    CSGLightList m_objLights;
};
