// The base of what has control points: meshes and surfaces. Its deformers are its sources
// (GetSrcObjects<FbxSkin>()).
#pragma once

#include "fbxsdk/scene/FbxNodeAttribute.h"

#include <cstdint>
#include <span>
#include <vector>

class FbxGeometry : public FbxNodeAttribute
{
  public:
    int32_t GetControlPointsCount() const { return static_cast<int32_t>(GetControlPoints().size() / 3); }
    // x, y and z of each, one after the other, in the space of the node's geometric transform.
    std::span<const double> GetControlPoints() const { return m_vecControlPoints; }

  protected:
    FbxGeometry(const CFBXObject* pObject, EType eType) : FbxNodeAttribute(pObject, eType) {}
    // In the place of another one, for the same object of the file.
    FbxGeometry(const FbxGeometry& rOriginal, EType eType)
        : FbxNodeAttribute(rOriginal.GetFileObject(), eType)
    {}

    std::vector<double> m_vecControlPoints;
};
