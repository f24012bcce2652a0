// One pass of an effect.
#pragma once

#include "qdscenegraph/material/CSGParamSet.h"
#include "qdscenegraph/material/CSGShader.h"

#include <vector>

// Not saved.
class CSGFXPass final : public CSGObject
{
  public:
    // Null (reported) without a parameter set. The surface is what the pass draws to; null for the view.
    static boost::intrusive_ptr<CSGFXPass> Create(const CSGParamSetPtr& spParamSet,
                                                  const CQDString& rName = CQDString(),
                                                  CSGSurface* pSurface = nullptr);

    const CQDString& GetName() const { return m_strName; }
    CSGParamSet* GetParamSet() const { return m_spParamSet.get(); }
    const std::vector<CSGShaderPtr>& GetShaders() const { return m_listShaders; }
    // False (reported) for a null shader.
    bool AddShader(const CSGShaderPtr& spShader);
    // False (reported) for a shader that the pass does not have.
    bool RemoveShader(const CSGShaderPtr& spShader);
    CSGSurface* GetSurface() const { return m_spSurface.get(); }
    void SetSurface(CSGSurface* pSurface) { m_spSurface = pSurface; }

    // Written to the log at level 7, each line behind the indent.
    void OutputDebugInfo(const CQDString& rIndent) const;
    size_t GetObjectSize() const override { return sizeof(CSGFXPass); }

  private:
    CSGParamSetPtr m_spParamSet;
    CQDString m_strName;
    std::vector<CSGShaderPtr> m_listShaders;
    CSGSurfacePtr m_spSurface;
};

using CSGFXPassPtr = boost::intrusive_ptr<CSGFXPass>;
