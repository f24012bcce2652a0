// Property templates, and to which objects each applies.
#include "fbxsdk/objects/CFBXDefinitions.h"

#include "fbxsdk/document/CFBXRecord.h"
#include "fbxsdk/objects/CFBXObjectTable.h"

namespace
{

// What the template of a kind of node attribute or geometry is called. Files until 7.2 write "KFbx" for
// "Fbx".
constexpr struct
{
    std::string_view strKind;
    std::string_view strTemplate;
} TEMPLATES_OF_KINDS[] = {
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

bool IsTemplateOfKind(std::string_view strTemplate, std::string_view strKind)
{
    for (const std::string_view strPrefix : {"KFbx", "Fbx"})
    {
        if (strTemplate.starts_with(strPrefix))
        {
            strTemplate.remove_prefix(strPrefix.size());
            break;
        }
    }
    for (const auto& rPair : TEMPLATES_OF_KINDS)
    {
        if (rPair.strKind == strKind)
        {
            return rPair.strTemplate == strTemplate;
        }
    }
    return false;
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
                m_vecTemplates.push_back({rClass.GetString(0), rTemplate.GetString(0), &rProperties});
            }
        }
    }
}

const CFBXProperties* CFBXDefinitions::Find(std::string_view strClass, std::string_view strKind) const
{
    const bool bHasKinds = strClass == "NodeAttribute" || strClass == "Geometry";
    for (const STemplate& rTemplate : m_vecTemplates)
    {
        if (rTemplate.strClass == strClass && (!bHasKinds || IsTemplateOfKind(rTemplate.strName, strKind)))
        {
            return rTemplate.pProperties;
        }
    }
    return nullptr;
}
