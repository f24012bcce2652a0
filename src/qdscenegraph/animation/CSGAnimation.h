// A named time range over the channels that drive a scene.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdscenegraph/streaming/CSGStreamable.h"

// So far a name and a time range: channels are not built yet, and a record that has any is refused.
class CSGAnimation : public SGStreamableInterface<CSGAnimation>
{
  public:
    static constexpr const char* SG_TYPE_NAME = "CSGAnimation";

    const CQDCompactString& GetName() const { return m_strName; }
    void SetName(const CQDCompactString& rName) { m_strName = rName; }
    // Seconds.
    float GetBeginTime() const { return m_fBeginTime; }
    float GetEndTime() const { return m_fEndTime; }

    bool ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState) override;
    bool WriteToStream(CStream* pStream, CSGStreamableSaveState* pSaveState) override;

  private:
    CQDCompactString m_strName;
    float m_fBeginTime = 0.0f;
    float m_fEndTime = 0.0f;
};
