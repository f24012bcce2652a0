#include "fbxsdk/geometry/FbxSkin.h"

#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/geometry/FbxCluster.h"
#include "fbxsdk/objects/CFBXObject.h"

#include <algorithm>

namespace
{

// 3ds Max writes a blend for every skin: mostly of nothing but the linear part.
bool HasBlendWeights(const CFBXRecord& rSkin)
{
    const CFBXRecord* pWeights = rSkin.FindChild("BlendWeights");
    std::vector<double> vecWeights;
    return pWeights != nullptr && pWeights->ReadDoubles(vecWeights) &&
           std::ranges::any_of(vecWeights, [](double d) { return d != 0.0; });
}

FbxSkin::EType GetType(const CFBXRecord& rSkin)
{
    const std::string_view strType = rSkin.GetChildString("SkinningType");
    if (strType == "Rigid")
    {
        return FbxSkin::eRigid;
    }
    if (strType == "DualQuaternion")
    {
        return FbxSkin::eDualQuaternion;
    }
    return strType == "Blend" && HasBlendWeights(rSkin) ? FbxSkin::eBlend : FbxSkin::eLinear;
}

} // namespace

std::unique_ptr<FbxSkin> FbxSkin::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::unique_ptr<FbxSkin> spSkin(new FbxSkin(rObject));
    if (rObject.pRecord != nullptr)
    {
        spSkin->m_eSkinningType = GetType(*rObject.pRecord);
    }
    return spSkin;
}

void FbxSkin::OnConnected() { m_vecClusters = GetSrcObjects<FbxCluster>(); }
