// A layer of an animation stack: what is animated, and by which curves.
#pragma once

#include "fbxsdk/base/FbxObject.h"
#include "fbxsdk/base/FbxTime.h"
#include "fbxsdk/base/FbxVector.h"

#include <functional>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

class FbxAnimCurve;
class FbxAnimCurveNode;

// Belongs to the first stack that it is connected to.
class FbxAnimLayer final : public FbxObject
{
  public:
    static std::unique_ptr<FbxAnimLayer> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // In file order.
    const std::vector<FbxAnimCurveNode*>& GetCurveNodes() const { return m_vecCurveNodes; }
    // The objects that they drive properties of, each once.
    const std::vector<const FbxObject*>& GetDrivenObjects() const { return m_vecDrivenObjects; }
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
    friend class FbxAnimCurveNode;

    using CProperty = std::pair<const FbxObject*, std::string_view>;
    struct CPropertyHash
    {
        size_t operator()(const CProperty& rProperty) const
        {
            return std::hash<const FbxObject*>()(rProperty.first) * 31 +
                   std::hash<std::string_view>()(rProperty.second);
        }
    };

    explicit FbxAnimLayer(const CFBXObject* pObject) : FbxObject(pObject) {}
    // Called once by each of its curve nodes, which has its curves.
    void AddCurveNode(FbxAnimCurveNode& rCurveNode);

    std::vector<FbxAnimCurveNode*> m_vecCurveNodes; // borrowed, as are all below
    std::unordered_map<CProperty, FbxAnimCurveNode*, CPropertyHash> m_mapCurveNodes;
    std::vector<const FbxObject*> m_vecDrivenObjects;
    std::unordered_set<const FbxObject*> m_setDrivenObjects;
};
