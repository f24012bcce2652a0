// Everything that was read from a file.
#pragma once

#include "fbxsdk/objects/CFBXIdHash.h"
#include "fbxsdk/scene/FbxNode.h"

#include <memory>
#include <memory_resource>
#include <unordered_map>
#include <vector>

class CFBXObjectTable;
class FbxGlobalSettings;
class FbxManager;

// Owns its objects, and the file's document that they borrow from.
class FbxScene
{
  public:
    ~FbxScene();
    FbxScene(const FbxScene&) = delete;
    FbxScene& operator=(const FbxScene&) = delete;

    // An empty scene: a root node alone. The manager keeps it. Null (reported) without a manager.
    static FbxScene* Create(FbxManager* pManager, CQDString strName);

    const CQDString& GetName() const { return m_strName; }
    // The program that wrote the file, as it calls itself; empty when no file says it.
    std::string_view GetCreator() const;
    FbxNode* GetRootNode() const { return m_pRootNode; }
    const FbxGlobalSettings& GetGlobalSettings() const { return *m_pGlobalSettings; }

    // All of a class, in file order.
    template <class T>
    std::vector<T*> GetObjects() const
    {
        std::vector<T*> vecObjects;
        for (const std::unique_ptr<FbxObject>& spObject : m_vecObjects)
        {
            if (T* pObject = dynamic_cast<T*>(spObject.get()))
            {
                vecObjects.push_back(pObject);
            }
        }
        return vecObjects;
    }
    // Null when there is none of the id. The root's is 0.
    FbxObject* FindObject(int64_t nUniqueID) const;

    // Takes an object that was made of others. Returns it.
    template <class T>
    T* AddObject(std::unique_ptr<T> spObject)
    {
        T* pObject = spObject.get();
        Take(std::move(spObject));
        return pObject;
    }

  private:
    friend class CFBXSceneBuilder;

    explicit FbxScene(CQDString strName);
    // An empty scene, before it is filled with the objects of the table.
    void Reset(std::unique_ptr<CFBXObjectTable> spTable);
    void Take(std::unique_ptr<FbxObject> spObject);

    CQDString m_strName;
    std::unique_ptr<CFBXObjectTable> m_spTable; // null: no file was read
    std::vector<std::unique_ptr<FbxObject>> m_vecObjects;
    std::vector<CFBXLink> m_vecLinks; // of all objects, those of one beside each other
    // What the map consists of lies side by side, and goes at once.
    std::pmr::monotonic_buffer_resource m_objMapMemory;
    std::pmr::unordered_map<int64_t, FbxObject*, CFBXIdHash> m_mapObjects{&m_objMapMemory};
    FbxNode* m_pRootNode = nullptr;
    FbxGlobalSettings* m_pGlobalSettings = nullptr;
};
