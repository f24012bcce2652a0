#include "qdscenegraph/material/CSGShader.h"

#include "qdscenegraph/object/CSGMem.h"

CSGShaderPtr CSGShader::Create(EStage eStage, const CQDString& rSource)
{
    CSGShaderPtr spShader = CSGMem::Construct<CSGShader>();
    if (spShader)
    {
        spShader->m_eStage = eStage;
        spShader->m_strSource = rSource;
    }
    return spShader;
}
