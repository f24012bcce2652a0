// Property templates, and to which objects each applies.
#include "fbxsdk/objects/CFBXDefinitions.h"

#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/CFBXObjectTable.h"

#include <algorithm>
#include <iterator>

namespace
{

// What the template of a kind of node attribute or geometry is called. Files until 7.2 write "KFbx" for
// "Fbx".
struct CPair
{
    std::string_view strKind;
    std::string_view strTemplate;
};

constexpr CPair TEMPLATES_OF_KINDS[] = {
    {"Camera", "Camera"},
    {"CameraStereo", "CameraStereo"},
    {"CameraSwitcher", "CameraSwitcher"},
    {"Light", "Light"},
    {"Null", "Null"},
    {"Limb", "Skeleton"},
    {"LimbNode", "Skeleton"},
    {"Effector", "Skeleton"},
    {"Root", "Skeleton"},
    {"LodGroup", "LODGroup"},
    {"Marker", "Marker"},
    {"Mesh", "Mesh"},
    {"Shape", "Shape"},
    {"Line", "Line"},
    {"Nurbs", "Nurbs"},
    {"NurbsCurve", "NurbsCurve"},
    {"NurbsSurface", "NurbsSurface"},
    {"TrimNurbsSurface", "TrimNurbsSurface"},
    {"Boundary", "Boundary"},
    {"Patch", "Patch"},
};

bool HasKinds(std::string_view strClass) { return strClass == "NodeAttribute" || strClass == "Geometry"; }

std::string_view CutPrefix(std::string_view strTemplate)
{
    for (const std::string_view strPrefix : {"KFbx", "Fbx"})
    {
        if (strTemplate.starts_with(strPrefix))
        {
            return strTemplate.substr(strPrefix.size());
        }
    }
    return strTemplate;
}

} // namespace

CFBXDefinitions::CFBXDefinitions(const CFBXRecord& rRoot, CFBXObjectTable& rTable)
{
    const CFBXRecord* pDefinitions = rRoot.FindChild("Definitions");
    if (pDefinitions == nullptr)
    {
        return;
    }
    for (const CFBXRecord& rClass : pDefinitions->GetChildren())
    {
        for (const CFBXRecord& rTemplate : rClass.GetChildren())
        {
            if (rTemplate.GetName() == "PropertyTemplate")
            {
                CFBXProperties& rProperties = rTable.AddTemplate();
                rProperties.Read(rTemplate);
                const std::string_view strClass = rClass.GetString(0);
                const std::string_view strName =
                    HasKinds(strClass) ? CutPrefix(rTemplate.GetString(0)) : std::string_view();
                m_mapTemplates.emplace(std::pair(strClass, strName), &rProperties);
            }
        }
    }
}

const CFBXProperties* CFBXDefinitions::Find(std::string_view strClass, std::string_view strKind) const
{
    std::string_view strName;
    if (HasKinds(strClass))
    {
        const auto* pPair = std::ranges::find(TEMPLATES_OF_KINDS, strKind, &CPair::strKind);
        if (pPair == std::end(TEMPLATES_OF_KINDS))
        {
            return nullptr;
        }
        strName = pPair->strTemplate;
    }
    const auto it = m_mapTemplates.find({strClass, strName});
    return it != m_mapTemplates.end() ? it->second : nullptr;
}
