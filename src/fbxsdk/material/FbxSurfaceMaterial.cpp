#include "fbxsdk/material/FbxSurfaceMaterial.h"

#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/material/FbxTexture.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "fbxsdk/objects/FBXObjectName.h"

#include <algorithm>

std::unique_ptr<FbxSurfaceMaterial> FbxSurfaceMaterial::Create(const CFBXObjectTable&,
                                                               const CFBXObject& rObject)
{
    std::unique_ptr<FbxSurfaceMaterial> spMaterial(new FbxSurfaceMaterial(&rObject));
    spMaterial->m_strShadingModel =
        rObject.pRecord != nullptr ? LimitFBXName(rObject.pRecord->GetChildString(sShadingModel)) : "";
    if (spMaterial->m_strShadingModel.empty())
    {
        spMaterial->m_strShadingModel = LimitFBXName(spMaterial->FindProperty(sShadingModel).GetString());
    }
    return spMaterial;
}

void FbxSurfaceMaterial::OnConnected() { m_bHasNormalMap = !GetSrcObjects<FbxTexture>(sNormalMap).empty(); }

double FbxSurfaceMaterial::GetOpacity() const
{
    // Definitions give an opacity of 1 to all, whatever the material's own colour and factor say.
    double dOpacity = 1.0;
    bool bSaysOpacity = false;
    for (const FbxProperty& rProperty : GetProperties())
    {
        if (rProperty.GetName() == "Opacity")
        {
            dOpacity = rProperty.GetDouble(1.0);
            bSaysOpacity = true;
        }
    }
    const FbxProperty objColor = FindProperty(sTransparentColor);
    if (dOpacity == 1.0 && (objColor.IsValid() || !bSaysOpacity))
    {
        const FbxDouble3 vColor = objColor.GetDouble3({1, 1, 1});
        dOpacity =
            1.0 - FindProperty(sTransparencyFactor).GetDouble() * (vColor[0] + vColor[1] + vColor[2]) / 3.0;
    }
    return std::clamp(dOpacity, 0.0, 1.0);
}
