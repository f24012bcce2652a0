// Scenes read from the text of an ASCII FBX file:
//
//     const CFBXTestScene objScene(R"(
//         Objects: {
//             Model: 1, "Model::A", "Null" { Properties70: { P: "Lcl Scaling", "", "", "A", 2,2,2 } }
//         }
//         Connections: { C: "OO",1,0 })");
//     objScene.FindNode("A")->EvaluateGlobalTransform() ...
#pragma once

#include "fbxsdk/fbxsdk.h"
#include "fbxsdk/import/CFBXSceneBuilder.h"
#include "fbxsdk/objects/CFBXObjectTable.h"

#include <string>
#include <string_view>

class CFBXTestScene
{
  public:
    // The text follows the header of a file of the version. A scene that cannot be read is empty, and
    // GetError says why.
    explicit CFBXTestScene(std::string_view strText, int nVersion = 7400)
    {
        const std::string strFile =
            "; FBX project file\nFBXHeaderExtension:  {\n FBXHeaderVersion: 1003\n FBXVersion: " +
            std::to_string(nVersion) + "\n}\n" + std::string(strText) + "\n";
        std::unique_ptr<CFBXDocument> spDocument =
            CFBXDocument::FromBytes(std::vector<uint8_t>(strFile.begin(), strFile.end()), m_strError);
        if (spDocument == nullptr)
        {
            return;
        }
        if (std::unique_ptr<CFBXObjectTable> spTable =
                CFBXObjectTable::Create(std::move(spDocument), m_strError))
        {
            CFBXSceneBuilder(*m_pScene, std::move(spTable)).Build();
        }
    }

    FbxScene& operator*() const { return *m_pScene; }
    FbxScene* operator->() const { return m_pScene; }
    const CQDString& GetError() const { return m_strError; }

    // The first object of the class and name; null when there is none.
    template <class T>
    T* Find(std::string_view strName) const
    {
        for (T* pObject : m_pScene->GetObjects<T>())
        {
            if (pObject->GetName() == strName)
            {
                return pObject;
            }
        }
        return nullptr;
    }
    FbxNode* FindNode(std::string_view strName) const { return Find<FbxNode>(strName); }

  private:
    CQDString m_strError;
    std::unique_ptr<FbxManager> m_spManager = FbxManager::Create();
    FbxScene* m_pScene = FbxScene::Create(m_spManager.get(), "test");
};
