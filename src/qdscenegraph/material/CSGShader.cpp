#include "qdscenegraph/material/CSGShader.h"

#include <new>

CSGShaderPtr CSGShader::Create(EStage eStage, const CQDString& rSource)
{
    CSGShaderPtr spShader = new (std::nothrow) CSGShader;
    if (spShader)
    {
        spShader->m_eStage = eStage;
        spShader->m_strSource = rSource;
    }
    return spShader;
}
