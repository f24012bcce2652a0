// What one link, a node, does to the points of a skin.
#pragma once

#include "fbxsdk/base/FbxAMatrix.h"
#include "fbxsdk/base/FbxObject.h"

#include <memory>
#include <optional>

class CFBXObjectTable;
class CFBXRecord;
class FbxNode;

class FbxCluster final : public FbxObject
{
  public:
    // All clusters of a skin have the same.
    enum ELinkMode
    {
        eNormalize, // the weights of a point are divided by their sum
        eAdditive,  // each cluster moves the point, by its weight, beyond what the others do
        eTotalOne   // what the weights of a point lack of 1 leaves it where the mesh is
    };

    // Weights and matrices that are damaged or not finite are left out (reported).
    static std::unique_ptr<FbxCluster> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    ELinkMode GetLinkMode() const { return m_eLinkMode; }
    // Null when it has none.
    FbxNode* GetLink() const { return m_pLink; }
    // Control points, some of which the geometry may not have, and as many weights.
    std::span<const int32_t> GetControlPointIndices() const { return m_vecIndices; }
    std::span<const double> GetControlPointWeights() const { return m_vecWeights; }
    // From the space of the mesh's node to that of the link when they were bound: the "Transform" of files,
    // as it stands. (The SDK hands it out multiplied by the next one.) Empty when the file has none.
    const std::optional<FbxAMatrix>& GetTransformMatrix() const { return m_objTransform; }
    // The global transform of the link when it was bound; empty when the file has none.
    const std::optional<FbxAMatrix>& GetTransformLinkMatrix() const { return m_objTransformLink; }

  protected:
    void OnConnected() override;

  private:
    explicit FbxCluster(const CFBXObject& rObject) : FbxObject(&rObject) {}
    void ReadWeights(const CFBXRecord& rRecord);
    std::optional<FbxAMatrix> ReadMatrix(const CFBXRecord& rRecord, const char* szName) const;

    ELinkMode m_eLinkMode = eNormalize;
    FbxNode* m_pLink = nullptr;
    std::vector<int32_t> m_vecIndices;
    std::vector<double> m_vecWeights;
    std::optional<FbxAMatrix> m_objTransform;
    std::optional<FbxAMatrix> m_objTransformLink;
};
