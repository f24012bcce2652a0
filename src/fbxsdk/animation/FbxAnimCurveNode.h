// The curves of one animated property: one for each of its components that has one.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <memory>
#include <string_view>
#include <vector>

class FbxAnimCurve;

// Belongs to the first layer that it is connected to.
class FbxAnimCurveNode final : public FbxObject
{
  public:
    // A component of the property: "X", "Y", "Z", or the property's name ("Visibility") when it has only one.
    struct SChannel
    {
        std::string_view strName;
        double dValue = 0;              // for as long as there is no curve
        FbxAnimCurve* pCurve = nullptr; // borrowed; null: there is none, or none with keys
    };

    static std::unique_ptr<FbxAnimCurveNode> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    // In file order.
    const std::vector<SChannel>& GetChannels() const { return m_vecChannels; }
    // Null when there is none of the name. The empty name: the first that has a curve, else the first.
    const SChannel* FindChannel(std::string_view strComponent) const;
    // Some component has a curve.
    bool IsAnimated() const;

  protected:
    void OnConnected() override;

  private:
    explicit FbxAnimCurveNode(const CFBXObject* pObject) : FbxObject(pObject) {}

    void ConnectCurve(std::string_view strProperty, FbxAnimCurve& rCurve);

    std::vector<SChannel> m_vecChannels;
};
