// What the reader makes of small ASCII files: their objects, and their scene.
#pragma once

#include "fbxsdk/fbxsdk.h"
#include "fbxsdk/import/CFBXSceneBuilder.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "support/FBXTestText.h"

#include <algorithm>

// Null when the file cannot be read; the error then says why.
inline std::unique_ptr<CFBXObjectTable> ReadFBXTable(std::string_view strFile, CQDString& rError)
{
    auto spDocument = CFBXDocument::FromBytes({strFile.begin(), strFile.end()}, rError);
    return spDocument != nullptr ? CFBXObjectTable::Create(std::move(spDocument), rError) : nullptr;
}

class CFBXTestScene
{
  public:
    // A scene that cannot be read is empty.
    explicit CFBXTestScene(const std::string& rObjects, const std::string& rConnections = "",
                           const std::string& rMore = "")
    {
        CQDString strError;
        if (auto spTable = ReadFBXTable(MakeFBXFile(rObjects, rConnections, rMore), strError))
        {
            CFBXSceneBuilder(*m_pScene, std::move(spTable)).Build();
        }
    }

    FbxScene* operator->() const { return m_pScene; }
    // The first object of the class and name; null when there is none.
    template <class T>
    T* Find(std::string_view strName) const
    {
        const std::vector<T*> vecObjects = m_pScene->GetObjects<T>();
        const auto itObject = std::ranges::find(vecObjects, strName, &T::GetName);
        return itObject != vecObjects.end() ? *itObject : nullptr;
    }
    FbxNode* FindNode(std::string_view strName) const { return Find<FbxNode>(strName); }

  private:
    std::unique_ptr<FbxManager> m_spManager = FbxManager::Create();
    FbxScene* m_pScene = FbxScene::Create(m_spManager.get(), "test");
};
