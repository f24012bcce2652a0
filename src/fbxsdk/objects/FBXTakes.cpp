// Takes: for each object a tree of channels, for each channel the keys of a number.
#include "fbxsdk/objects/FBXTakes.h"

#include "fbxsdk/document/CFBXLog.h"
#include "qdcommon/CLog.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

namespace
{

using Channels = std::vector<const CFBXRecord*>;

Channels GetChannels(const CFBXRecord& rRecord)
{
    Channels vecChannels;
    for (const CFBXRecord& rChild : rRecord.GetChildren())
    {
        if (rChild.GetName() == "Channel")
        {
            vecChannels.push_back(&rChild);
        }
    }
    return vecChannels;
}

bool HasKeys(const CFBXRecord* pChannel)
{
    const CFBXRecord* pKeys = pChannel->FindChild("Key");
    return pKeys != nullptr && pKeys->GetNumValues() > 0;
}

constexpr std::string_view COMPONENTS = "XYZW";

// X, Y and Z of one property, not channels of several ones.
bool IsVector(const Channels& rChannels)
{
    return !rChannels.empty() && std::ranges::all_of(rChannels, [](const CFBXRecord* pChannel) {
        const std::string_view strName = pChannel->GetString(0);
        return strName.size() == 1 && COMPONENTS.find(strName) != std::string_view::npos;
    });
}

// T, R and S of the group "Transform": of a model its local transform, of a texture properties of its own.
std::string_view GetPropertyOfTransform(std::string_view strChannel, bool bModel)
{
    constexpr struct
    {
        std::string_view strChannel;
        std::string_view strModel;
        std::string_view strOther;
    } PROPERTIES[] = {
        {"T", "Lcl Translation", "Translation"},
        {"R", "Lcl Rotation", "Rotation"},
        {"S", "Lcl Scaling", "Scaling"},
    };
    for (const auto& rProperty : PROPERTIES)
    {
        if (rProperty.strChannel == strChannel)
        {
            return bModel ? rProperty.strModel : rProperty.strOther;
        }
    }
    return strChannel;
}

// Whether the channels have keys, or else give the property another value for the time of the take. Without
// either they say what the property says, and writers differ in whether they write them.
bool IsAnimated(const Channels& rChannels, const CFBXObject& rTarget, std::string_view strProperty)
{
    // Writers round differently here and there.
    constexpr double TOLERANCE = 1e-5;

    if (std::ranges::any_of(rChannels, HasKeys))
    {
        return true;
    }
    const CFBXProperty* pProperty = rTarget.objProperties.Find(strProperty);
    return pProperty != nullptr && strProperty != "Visibility" && // older files have it in percent
           std::ranges::any_of(rChannels, [&](const CFBXRecord* pChannel) {
               const size_t uiComponent = COMPONENTS.find(pChannel->GetString(0));
               const double dValue = pProperty->GetDouble(uiComponent < COMPONENTS.size() ? uiComponent : 0);
               const double dDefault = pChannel->GetChildDouble("Default", dValue);
               return std::abs(dDefault - dValue) > TOLERANCE * std::max(1.0, std::abs(dValue));
           });
}

class CTakeReader
{
  public:
    CTakeReader(CFBXObjectTable& rTable, const FBXModelPartsMap& rParts) : m_rTable(rTable), m_rParts(rParts)
    {}

    void ReadTake(const CFBXRecord& rTake)
    {
        CFBXObject objStack;
        objStack.strClass = "AnimationStack";
        objStack.strName = rTake.GetString(0);
        objStack.pRecord = &rTake;
        AddTimes(rTake, "LocalTime", "LocalStart", "LocalStop", objStack.objProperties);
        AddTimes(rTake, "ReferenceTime", "ReferenceStart", "ReferenceStop", objStack.objProperties);
        if (const CFBXRecord* pComment = rTake.FindChild("Comments"))
        {
            objStack.objProperties.Add({"Description", "KString", {}, {}, pComment->GetValues()});
        }
        CFBXObject objLayer;
        objLayer.strClass = "AnimationLayer";
        objLayer.strName = "BaseLayer";
        m_nLayer = m_rTable.AddUnnumberedObject(objLayer).nId;
        m_rTable.AddConnection({m_nLayer, m_rTable.AddUnnumberedObject(objStack).nId});

        for (const CFBXRecord& rRecord : rTake.GetChildren())
        {
            const Channels vecChannels = GetChannels(rRecord);
            if (vecChannels.empty())
            {
                continue;
            }
            const CFBXObject* pObject = m_rTable.FindObjectByName(rRecord.GetString(0));
            if (pObject == nullptr)
            {
                Log(FBXSDK, LOG_INFO, "Take '%s' animates %s, which the file does not have.",
                    CQDString(objStack.strName), rRecord.Describe());
                continue;
            }
            for (const CFBXRecord* pChannel : vecChannels)
            {
                ReadChannel(*pChannel, *pObject, pChannel->GetString(0));
            }
        }
    }

  private:
    // "LocalTime: 0,46186158000"
    static void AddTimes(const CFBXRecord& rTake, std::string_view strRecord, std::string_view strStart,
                         std::string_view strStop, CFBXProperties& rProperties)
    {
        const CFBXRecord* pTimes = rTake.FindChild(strRecord);
        if (pTimes != nullptr && pTimes->GetNumValues() >= 2)
        {
            rProperties.Add({strStart, "KTime", "Time", {}, pTimes->GetValues().subspan(0, 1)});
            rProperties.Add({strStop, "KTime", "Time", {}, pTimes->GetValues().subspan(1, 1)});
        }
    }

    // Groups of channels nest no deeper than the document does.
    void ReadChannel(const CFBXRecord& rChannel, const CFBXObject& rObject, std::string_view strProperty)
    {
        const Channels vecChannels = GetChannels(rChannel);
        if (vecChannels.empty())
        {
            AddNumber(rChannel, rObject, strProperty);
        }
        else if (IsVector(vecChannels))
        {
            AddVector(vecChannels, rObject, strProperty, rChannel.GetString(0));
        }
        else
        {
            const bool bTransform = rChannel.GetString(0) == "Transform";
            for (const CFBXRecord* pChannel : vecChannels)
            {
                const std::string_view strName = pChannel->GetString(0);
                ReadChannel(*pChannel, rObject,
                            bTransform ? GetPropertyOfTransform(strName, rObject.strClass == "Model")
                                       : strName);
            }
        }
    }

    void AddNumber(const CFBXRecord& rChannel, const CFBXObject& rObject, std::string_view strProperty)
    {
        const CFBXObject& rTarget = FindTarget(rObject, strProperty);
        if (rTarget.strKind == "BlendShapeChannel")
        {
            strProperty = "DeformPercent"; // the file's channel bears the name of the shape
        }
        if (IsAnimated({&rChannel}, rTarget, strProperty))
        {
            CFBXObject& rNode = AddCurveNode(rTarget, strProperty, strProperty);
            AddComponent(rChannel, strProperty, rNode);
        }
    }

    void AddVector(const Channels& rChannels, const CFBXObject& rObject, std::string_view strProperty,
                   std::string_view strName)
    {
        const CFBXObject& rTarget = FindTarget(rObject, strProperty);
        if (IsAnimated(rChannels, rTarget, strProperty))
        {
            CFBXObject& rNode = AddCurveNode(rTarget, strProperty, strName);
            for (const CFBXRecord* pChannel : rChannels)
            {
                AddComponent(*pChannel, pChannel->GetString(0), rNode);
            }
        }
    }

    // A channel may drive what version 7 has as a property of the model's attribute or of one of its shapes.
    const CFBXObject& FindTarget(const CFBXObject& rObject, std::string_view strProperty) const
    {
        const auto itParts = m_rParts.find(rObject.nId);
        if (itParts == m_rParts.end())
        {
            return rObject;
        }
        const SFBXModelParts& rParts = itParts->second;
        if (const auto itShape = rParts.mapShapeChannels.find(strProperty);
            itShape != rParts.mapShapeChannels.end())
        {
            return *itShape->second;
        }
        const bool bOfAttribute = rParts.pAttribute != nullptr &&
                                  rObject.objProperties.Find(strProperty) == nullptr &&
                                  rParts.pAttribute->objProperties.Find(strProperty) != nullptr;
        return bOfAttribute ? *rParts.pAttribute : rObject;
    }

    CFBXObject& AddCurveNode(const CFBXObject& rTarget, std::string_view strProperty,
                             std::string_view strName)
    {
        CFBXObject objNode;
        objNode.strClass = "AnimationCurveNode";
        objNode.strName = strName;
        CFBXObject& rNode = m_rTable.AddUnnumberedObject(objNode);
        m_rTable.AddConnection({rNode.nId, m_nLayer});
        m_rTable.AddConnection({rNode.nId, rTarget.nId, EFBXConnection::OP, {}, strProperty});
        return rNode;
    }

    // The value without keys becomes a property of the curve node, the keys a curve.
    void AddComponent(const CFBXRecord& rChannel, std::string_view strComponent, CFBXObject& rNode)
    {
        const std::string_view strProperty = m_rTable.KeepText("d|" + CQDString(strComponent));
        if (const CFBXRecord* pDefault = rChannel.FindChild("Default"))
        {
            rNode.objProperties.Add({strProperty, "Number", {}, "A", pDefault->GetValues()});
        }
        if (HasKeys(&rChannel))
        {
            CFBXObject objCurve;
            objCurve.strClass = "AnimationCurve";
            objCurve.pRecord = &rChannel;
            const int64_t nCurve = m_rTable.AddUnnumberedObject(objCurve).nId;
            m_rTable.AddConnection({nCurve, rNode.nId, EFBXConnection::OP, {}, strProperty});
        }
    }

    CFBXObjectTable& m_rTable;
    const FBXModelPartsMap& m_rParts;
    int64_t m_nLayer = 0;
};

} // namespace

void ReadFBXTakes(CFBXObjectTable& rTable, const FBXModelPartsMap& rParts)
{
    const CFBXRecord* pTakes = rTable.GetDocument().GetRoot().FindChild("Takes");
    if (pTakes == nullptr)
    {
        return;
    }
    rTable.SetActiveStackName(pTakes->GetChildString("Current"));
    CTakeReader objReader(rTable, rParts);
    for (const CFBXRecord& rTake : pTakes->GetChildren())
    {
        if (rTake.GetName() == "Take")
        {
            objReader.ReadTake(rTake);
        }
    }
}
