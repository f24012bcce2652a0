#include "qdsgloader_collada/CColladaBindMaterial.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

void CColladaBindMaterial::LoadBindMaterial(const domBind_material& rBindMaterial,
                                            CColladaMaterials& rMaterials)
{
    if (const auto* pTechnique = rBindMaterial.getTechnique_common().cast())
    {
        for (const auto& rspInstance : AsSpan(pTechnique->getInstance_material_array()))
        {
            AddMaterial(CColladaInstanceMaterial::LoadInstanceMaterial(*rspInstance, rMaterials));
        }
    }
}

bool CColladaBindMaterial::AddMaterial(const CMaterialPtr& spMaterial)
{
    if (!spMaterial)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in NULL material.");
        return false;
    }
    m_vecMaterials.push_back(spMaterial);
    return true;
}

const CColladaInstanceMaterial* CColladaBindMaterial::GetMaterial(int32_t nIndex) const
{
    if (nIndex < 0 || nIndex >= GetNumMaterials())
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in invalid index %d", nIndex);
        return nullptr;
    }
    return m_vecMaterials[static_cast<size_t>(nIndex)].get();
}
