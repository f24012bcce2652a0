#include "fbxsdk/scene/FbxNodeAttribute.h"

#include "fbxsdk/objects/CFBXObject.h"
#include "fbxsdk/scene/FbxNode.h"

namespace
{

// By the kinds that files write.
constexpr struct
{
    std::string_view m_strKind;
    FbxNodeAttribute::EType m_eType;
} KINDS[] = {{"Marker", FbxNodeAttribute::eMarker},
             {"IKEffector", FbxNodeAttribute::eMarker},
             {"FKEffector", FbxNodeAttribute::eMarker},
             {"Patch", FbxNodeAttribute::ePatch},
             {"CameraStereo", FbxNodeAttribute::eCameraStereo},
             {"CameraSwitcher", FbxNodeAttribute::eCameraSwitcher},
             {"OpticalReference", FbxNodeAttribute::eOpticalReference},
             {"OpticalMarker", FbxNodeAttribute::eOpticalMarker},
             {"NurbsCurve", FbxNodeAttribute::eNurbsCurve},
             {"TrimNurbsSurface", FbxNodeAttribute::eTrimNurbsSurface},
             {"Boundary", FbxNodeAttribute::eBoundary},
             {"LodGroup", FbxNodeAttribute::eLODGroup},
             {"SubDiv", FbxNodeAttribute::eSubDiv},
             {"CachedEffect", FbxNodeAttribute::eCachedEffect},
             {"Line", FbxNodeAttribute::eLine}};

} // namespace

std::unique_ptr<FbxNodeAttribute> FbxNodeAttribute::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    EType eType = eUnknown;
    for (const auto& rKind : KINDS)
    {
        if (rObject.strKind == rKind.m_strKind)
        {
            eType = rKind.m_eType;
        }
    }
    return std::unique_ptr<FbxNodeAttribute>(new FbxNodeAttribute(&rObject, eType));
}

FbxNode* FbxNodeAttribute::GetNode() const
{
    const std::vector<FbxNode*> vecNodes = GetDstObjects<FbxNode>();
    return vecNodes.empty() ? nullptr : vecNodes.front();
}
