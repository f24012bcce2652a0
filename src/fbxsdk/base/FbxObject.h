// The base of everything in a scene.
#pragma once

#include "fbxsdk/base/FbxProperty.h"
#include "qdcommon/CQDString.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

struct CFBXObject;
class CFBXObjectTable;
class FbxObject;
class FbxScene;

// One end of a connection, as seen from the other.
struct CFBXLink
{
    FbxObject* m_pObject;
    std::string_view
        m_strProperty; // of the destination that the source is connected to; empty: the object itself
};

// Objects belong to their scene; pointers between them are borrowed.
class FbxObject
{
  public:
    virtual ~FbxObject();
    FbxObject(const FbxObject&) = delete;
    FbxObject& operator=(const FbxObject&) = delete;

    // Without the class that files write in front of it or behind.
    const CQDString& GetName() const { return m_strName; }
    int64_t GetUniqueID() const { return m_nUniqueID; }
    FbxScene* GetScene() const { return m_pScene; }

    // The object's own, else the one that the file's definitions give to all of its class; else an invalid
    // one.
    FbxProperty FindProperty(std::string_view strName) const;
    // The same for a property that some tools write under another name: that one goes first, as no
    // definitions have it.
    FbxProperty FindProperty(std::string_view strName, std::string_view strOtherName) const;
    // The object's own, in file order.
    std::vector<FbxProperty> GetProperties() const;

    // What is connected to this (children, materials of a node, textures of a material), in file order.
    std::span<const CFBXLink> GetSrcLinks() const { return m_arrSources; }
    // What this is connected to.
    std::span<const CFBXLink> GetDstLinks() const { return m_arrDestinations; }

    // Those of a class, whatever property they are connected to.
    template <class T>
    std::vector<T*> GetSrcObjects() const
    {
        return Filter<T>(m_arrSources, nullptr);
    }
    // Those that are connected to one property; the empty name: to the object itself.
    template <class T>
    std::vector<T*> GetSrcObjects(std::string_view strProperty) const
    {
        return Filter<T>(m_arrSources, &strProperty);
    }
    template <class T>
    std::vector<T*> GetDstObjects() const
    {
        return Filter<T>(m_arrDestinations, nullptr);
    }
    template <class T>
    std::vector<T*> GetDstObjects(std::string_view strProperty) const
    {
        return Filter<T>(m_arrDestinations, &strProperty);
    }

    // Of what this belongs to. Null when there is none.
    template <class T>
    T* FindFirstDstObject() const
    {
        for (const CFBXLink& rLink : m_arrDestinations)
        {
            if (T* pObject = dynamic_cast<T*>(rLink.m_pObject))
            {
                return pObject;
            }
        }
        return nullptr;
    }

  protected:
    // Null for an object that the file does not have: it is without name, id and properties.
    explicit FbxObject(const CFBXObject* pObject);

    // Null when the file does not have it.
    const CFBXObject* GetFileObject() const { return m_pFileObject; }
    void SetName(CQDString strName) { m_strName = std::move(strName); }
    // Takes the connections of an object whose place this one takes.
    void TakeLinksOf(const FbxObject& rOther);

    // Called once, when all objects of the scene are there and connected.
    virtual void OnConnected() {}

  private:
    friend class CFBXSceneBuilder;
    friend class FbxScene;

    template <class T>
    static std::vector<T*> Filter(std::span<const CFBXLink> arrLinks, const std::string_view* pProperty)
    {
        std::vector<T*> vecObjects;
        for (const CFBXLink& rLink : arrLinks)
        {
            if (pProperty == nullptr || rLink.m_strProperty == *pProperty)
            {
                if (T* pObject = dynamic_cast<T*>(rLink.m_pObject))
                {
                    vecObjects.push_back(pObject);
                }
            }
        }
        return vecObjects;
    }

    const CFBXObject* m_pFileObject;
    FbxScene* m_pScene = nullptr;
    CQDString m_strName;
    int64_t m_nUniqueID = 0;
    std::span<const CFBXLink> m_arrSources;
    std::span<const CFBXLink> m_arrDestinations;
};
