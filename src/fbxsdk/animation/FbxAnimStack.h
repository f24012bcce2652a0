// An animation of the scene, a "take": layers that work together over one span of time.
#pragma once

#include "fbxsdk/base/FbxObject.h"
#include "fbxsdk/base/FbxTime.h"

#include <memory>
#include <vector>

class FbxAnimLayer;

class FbxAnimStack final : public FbxObject
{
  public:
    static std::unique_ptr<FbxAnimStack> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    CQDString GetDescription() const { return CQDString(FindProperty("Description").GetString()); }
    // Empty when the file does not say.
    const FbxTimeSpan& GetLocalTimeSpan() const { return m_objLocalTimeSpan; }
    // In file order; borrowed from the scene.
    const std::vector<FbxAnimLayer*>& GetLayers() const { return m_vecLayers; }

  private:
    friend class FbxAnimLayer;

    explicit FbxAnimStack(const CFBXObject* pObject) : FbxObject(pObject) {}

    void AddLayer(FbxAnimLayer& rLayer) { m_vecLayers.push_back(&rLayer); }

    FbxTimeSpan m_objLocalTimeSpan;
    std::vector<FbxAnimLayer*> m_vecLayers;
};
