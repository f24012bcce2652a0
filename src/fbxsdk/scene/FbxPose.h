// Where nodes stood at some moment, above all when a mesh was bound to its bones.
#pragma once

#include "fbxsdk/base/FbxAMatrix.h"
#include "fbxsdk/base/FbxObject.h"

#include <memory>
#include <vector>

class CFBXObjectTable;
class FbxNode;

class FbxPose final : public FbxObject
{
  public:
    static std::unique_ptr<FbxPose> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    bool IsBindPose() const { return m_bBindPose; }
    int GetCount() const { return static_cast<int>(m_vecEntries.size()); }
    // Null when the file names none of the scene's.
    FbxNode* GetNode(int n) const { return m_vecEntries[static_cast<size_t>(n)].m_pNode; }
    // From the node's space to the world's.
    const FbxAMatrix& GetMatrix(int n) const { return m_vecEntries[static_cast<size_t>(n)].m_objMatrix; }

  protected:
    void OnConnected() override;

  private:
    struct CEntry
    {
        const CFBXObject* m_pNodeObject = nullptr;
        FbxNode* m_pNode = nullptr;
        FbxAMatrix m_objMatrix;
    };

    explicit FbxPose(const CFBXObject& rObject);

    bool m_bBindPose;
    std::vector<CEntry> m_vecEntries;
};
