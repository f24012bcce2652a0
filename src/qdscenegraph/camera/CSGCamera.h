// The base of everything that a scene is looked at with.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/object/CSGTypeInfo.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

// A camera has no place of its own: it stands where the node that carries it stands, looks along that node's
// -Z and has its Y above. One camera may stand on several nodes.
class CSGCamera : public SGStreamableInterface<CSGCamera>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGCamera";

    // What all kinds of camera have.
    struct CFrame
    {
        float m_fAspectRatio = 1.0f; // width of the picture by its height
        float m_fNear = 1.0f;        // what is nearer or farther than these two distances is not seen
        float m_fFar = 1000.0f;

        bool operator==(const CFrame&) const = default;
    };

    // May be empty.
    const CQDCompactString& GetName() const { return m_strName; }
    void SetName(const CQDCompactString& rName) { m_strName = rName; }
    float GetAspectRatio() const { return m_objFrame.m_fAspectRatio; }
    float GetNear() const { return m_objFrame.m_fNear; }
    float GetFar() const { return m_objFrame.m_fFar; }
    void SetFrame(const CFrame& rFrame) { m_objFrame = rFrame; }
    virtual const CSGTypeInfo<CSGCamera>* GetTypeInfo() const = 0;

    // The record begins with the name, the aspect ratio and the two distances.
    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;
    // Written to the log at level 7, one line behind the indent.
    virtual void OutputDebugInfo(const CQDString& rIndent) const = 0;

  private:
    CQDCompactString m_strName;
    CFrame m_objFrame;
};
