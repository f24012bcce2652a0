// What a node can carry: a mesh, a light, a camera, a bone.
#pragma once

#include "fbxsdk/base/FbxObject.h"

#include <memory>

class CFBXObjectTable;
class FbxNode;

// Kinds that nobody here needs more of than to know that they are there are of this class itself.
class FbxNodeAttribute : public FbxObject
{
  public:
    enum EType
    {
        eUnknown,
        eNull,
        eMarker,
        eSkeleton,
        eMesh,
        eNurbs,
        ePatch,
        eCamera,
        eCameraStereo,
        eCameraSwitcher,
        eLight,
        eOpticalReference,
        eOpticalMarker,
        eNurbsCurve,
        eTrimNurbsSurface,
        eBoundary,
        eNurbsSurface,
        eShape,
        eLODGroup,
        eSubDiv,
        eCachedEffect,
        eLine
    };

    static std::unique_ptr<FbxNodeAttribute> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);

    EType GetAttributeType() const { return m_eType; }
    // The first node that carries it; null when none does.
    FbxNode* GetNode() const;

  protected:
    FbxNodeAttribute(const CFBXObject* pObject, EType eType) : FbxObject(pObject), m_eType(eType) {}

  private:
    EType m_eType;
};
