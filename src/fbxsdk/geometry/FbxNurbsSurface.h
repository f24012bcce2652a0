// A B-spline surface in the form that newer exporters write.
#pragma once

#include "fbxsdk/geometry/CFBXNurbsPatch.h"
#include "fbxsdk/geometry/FbxGeometry.h"

#include <memory>

class CFBXObjectTable;

class FbxNurbsSurface final : public FbxGeometry
{
  public:
    // Null (reported) when it is damaged.
    static std::unique_ptr<FbxNurbsSurface> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    const CFBXNurbsPatch& GetPatch() const { return m_objPatch; }

  private:
    FbxNurbsSurface(const CFBXObject* pObject, CFBXNurbsPatch&& rPatch);

    CFBXNurbsPatch m_objPatch;
};
