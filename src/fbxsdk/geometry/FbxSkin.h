// A deformer: the points of a geometry follow the links of its clusters.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <memory>

class CFBXObjectTable;
class FbxCluster;

class FbxSkin final : public FbxObject
{
  public:
    enum EType
    {
        eRigid,
        eLinear,
        eDualQuaternion,
        eBlend // of the last two, by a weight of each point; linear when all of those are 0
    };

    static std::unique_ptr<FbxSkin> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    EType GetSkinningType() const { return m_eSkinningType; }
    // In file order.
    const std::vector<FbxCluster*>& GetClusters() const { return m_vecClusters; }

  protected:
    void OnConnected() override;

  private:
    explicit FbxSkin(const CFBXObject& rObject) : FbxObject(&rObject) {}

    EType m_eSkinningType = eLinear;
    std::vector<FbxCluster*> m_vecClusters;
};
