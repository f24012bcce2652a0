#include "fbxsdk/geometry/FbxNurbsSurface.h"

#include "fbxsdk/objects/CFBXObject.h"

FbxNurbsSurface::FbxNurbsSurface(const CFBXObject* pObject, CFBXNurbsPatch&& rPatch)
    : FbxGeometry(pObject, eNurbsSurface),
      m_objPatch(std::move(rPatch))
{}

std::unique_ptr<FbxNurbsSurface> FbxNurbsSurface::Create(const CFBXObjectTable&, const CFBXObject& rObject)
{
    std::optional<CFBXNurbsPatch> objPatch = CFBXNurbsPatch::Read(rObject);
    return objPatch ? std::unique_ptr<FbxNurbsSurface>(new FbxNurbsSurface(&rObject, std::move(*objPatch)))
                    : nullptr;
}
