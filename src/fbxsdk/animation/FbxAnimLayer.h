// A layer of an animation stack: what is animated, and by which curves.
#pragma once

#include "fbxsdk/base/FbxObject.h"
#include "fbxsdk/base/FbxTime.h"
#include "fbxsdk/base/FbxVector.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

class FbxAnimCurve;
class FbxAnimCurveNode;

class FbxAnimLayer final : public FbxObject
{
  public:
    static std::unique_ptr<FbxAnimLayer> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // In file order.
    const std::vector<FbxAnimCurveNode*>& GetCurveNodes() const { return m_vecCurveNodes; }
    // What drives a property ("Lcl Translation") of an object; null when nothing does. Of several, the first
    // that is animated.
    FbxAnimCurveNode* GetCurveNode(const FbxObject* pObject, std::string_view strProperty) const;
    // The curve of a component ("X", "Y", "Z"; empty: of a property that has only one), with one key at
    // least. Null when it has none.
    FbxAnimCurve* GetCurve(const FbxObject* pObject, std::string_view strProperty,
                           std::string_view strComponent = {}) const;
    // Replaces the components that the layer says something of; the others stay. False, and all stays, when
    // nothing of the property changes with time.
    bool Evaluate(const FbxObject* pObject, std::string_view strProperty, FbxTime objTime,
                  FbxDouble3& rValue) const;

  protected:
    void OnConnected() override;

  private:
    // An object has few animated properties: they are looked for one after the other.
    struct SProperty
    {
        std::string_view strName;
        FbxAnimCurveNode* pCurveNode;
    };

    explicit FbxAnimLayer(const CFBXObject* pObject) : FbxObject(pObject) {}

    std::vector<FbxAnimCurveNode*> m_vecCurveNodes; // borrowed, as are all below
    std::unordered_map<const FbxObject*, std::vector<SProperty>> m_mapProperties;
};
