#include "fbxsdk/geometry/FbxNurbs.h"

#include "fbxsdk/geometry/FbxNurbsSurface.h"
#include "fbxsdk/objects/CFBXObject.h"

FbxNurbs::FbxNurbs(const CFBXObject* pObject, CFBXNurbsPatch&& rPatch)
    : FbxGeometry(pObject, eNurbs),
      m_objPatch(std::move(rPatch))
{}

FbxNurbs::FbxNurbs(const FbxNurbsSurface& rSurface)
    : FbxGeometry(rSurface, eNurbs),
      m_objPatch(rSurface.GetPatch())
{
    TakeLinksOf(rSurface);
}

std::unique_ptr<FbxNurbs> FbxNurbs::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::optional<CFBXNurbsPatch> objPatch = CFBXNurbsPatch::Read(rObject);
    return objPatch ? std::unique_ptr<FbxNurbs>(new FbxNurbs(&rObject, std::move(*objPatch))) : nullptr;
}

std::unique_ptr<FbxNurbs> FbxNurbs::Create(const FbxNurbsSurface& rSurface)
{
    return std::unique_ptr<FbxNurbs>(new FbxNurbs(rSurface));
}
