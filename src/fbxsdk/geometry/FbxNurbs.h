// A B-spline surface that can be made a mesh.
#pragma once

#include "fbxsdk/geometry/CFBXNurbsPatch.h"
#include "fbxsdk/geometry/FbxGeometry.h"

#include <memory>

class CFBXObjectTable;
class FbxNurbsSurface;

class FbxNurbs final : public FbxGeometry
{
  public:
    // Null (reported) when it is damaged.
    static std::unique_ptr<FbxNurbs> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);
    // In the surface's place, whose name and connections it takes.
    static std::unique_ptr<FbxNurbs> Create(const FbxNurbsSurface& rSurface);

    const CFBXNurbsPatch& GetPatch() const { return m_objPatch; }

  private:
    FbxNurbs(const CFBXObject* pObject, CFBXNurbsPatch&& rPatch);
    explicit FbxNurbs(const FbxNurbsSurface& rSurface);

    CFBXNurbsPatch m_objPatch;
};
