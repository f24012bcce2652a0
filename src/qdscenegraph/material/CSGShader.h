// One program of a pass.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"

// The renderer compiles it; here it is a text and the stage it is for. Not saved.
class CSGShader final : public CRefObject
{
  public:
    enum EStage
    {
        STAGE_VERTEX,
        STAGE_FRAGMENT
    };

    static boost::intrusive_ptr<CSGShader> Create(EStage eStage, const CQDString& rSource);

    EStage GetStage() const { return m_eStage; }
    const CQDString& GetSource() const { return m_strSource; }

  private:
    EStage m_eStage = STAGE_VERTEX;
    CQDString m_strSource;
};

using CSGShaderPtr = boost::intrusive_ptr<CSGShader>;
