#include "fbxsdk/import/CFBXObjectFactory.h"

#include "fbxsdk/animation/FbxAnimCurve.h"
#include "fbxsdk/animation/FbxAnimCurveNode.h"
#include "fbxsdk/animation/FbxAnimLayer.h"
#include "fbxsdk/animation/FbxAnimStack.h"
#include "fbxsdk/geometry/FbxBlendShape.h"
#include "fbxsdk/geometry/FbxCluster.h"
#include "fbxsdk/geometry/FbxMesh.h"
#include "fbxsdk/geometry/FbxNurbs.h"
#include "fbxsdk/geometry/FbxNurbsSurface.h"
#include "fbxsdk/geometry/FbxSkin.h"
#include "fbxsdk/geometry/FbxVertexCacheDeformer.h"
#include "fbxsdk/material/FbxFileTexture.h"
#include "fbxsdk/material/FbxLayeredTexture.h"
#include "fbxsdk/material/FbxProceduralTexture.h"
#include "fbxsdk/material/FbxSurfaceMaterial.h"
#include "fbxsdk/material/FbxVideo.h"
#include "fbxsdk/objects/CFBXObject.h"
#include "fbxsdk/scene/FbxCamera.h"
#include "fbxsdk/scene/FbxLight.h"
#include "fbxsdk/scene/FbxNode.h"
#include "fbxsdk/scene/FbxNull.h"
#include "fbxsdk/scene/FbxPose.h"
#include "fbxsdk/scene/FbxSkeleton.h"

namespace
{

template <class T>
std::unique_ptr<FbxObject> Make(const CFBXObjectTable& rTable, const CFBXObject& rObject)
{
    return T::Create(rTable, rObject);
}

struct CRow
{
    std::string_view m_strClass;
    std::string_view m_strKind; // empty: all that have no row of their own above
    std::unique_ptr<FbxObject> (*m_pMake)(const CFBXObjectTable&, const CFBXObject&); // null: none
};

constexpr CRow ROWS[] = {
    {"Model", "", Make<FbxNode>},
    {"NodeAttribute", "Null", Make<FbxNull>},
    {"NodeAttribute", "Root", Make<FbxSkeleton>},
    {"NodeAttribute", "Limb", Make<FbxSkeleton>},
    {"NodeAttribute", "LimbNode", Make<FbxSkeleton>},
    {"NodeAttribute", "Effector", Make<FbxSkeleton>},
    {"NodeAttribute", "Camera", Make<FbxCamera>},
    {"NodeAttribute", "Light", Make<FbxLight>},
    {"NodeAttribute", "", Make<FbxNodeAttribute>},
    {"Geometry", "Mesh", Make<FbxMesh>},
    {"Geometry", "Nurb", Make<FbxNurbs>},
    {"Geometry", "Nurbs", Make<FbxNurbs>},
    {"Geometry", "NurbsSurface", Make<FbxNurbsSurface>},
    {"Geometry", "Shape", nullptr}, // belongs to a blend shape, not to a node
    {"Geometry", "", Make<FbxNodeAttribute>},
    {"Deformer", "Skin", Make<FbxSkin>},
    {"Deformer", "Cluster", Make<FbxCluster>},
    {"Deformer", "BlendShape", Make<FbxBlendShape>},
    {"Deformer", "VertexCacheDeformer", Make<FbxVertexCacheDeformer>},
    {"Pose", "", Make<FbxPose>},
    {"Material", "", Make<FbxSurfaceMaterial>},
    {"Texture", "", Make<FbxFileTexture>},
    {"LayeredTexture", "", Make<FbxLayeredTexture>},
    {"ProceduralTexture", "", Make<FbxProceduralTexture>},
    {"Video", "", Make<FbxVideo>},
    {"AnimationStack", "", Make<FbxAnimStack>},
    {"AnimationLayer", "", Make<FbxAnimLayer>},
    {"AnimationCurveNode", "", Make<FbxAnimCurveNode>},
    {"AnimationCurve", "", Make<FbxAnimCurve>},
};

} // namespace

std::unique_ptr<FbxObject> CFBXObjectFactory::Create(const CFBXObjectTable& rTable, const CFBXObject& rObject)
{
    for (const CRow& rRow : ROWS)
    {
        if (rObject.strClass == rRow.m_strClass &&
            (rRow.m_strKind.empty() || rObject.strKind == rRow.m_strKind))
        {
            return rRow.m_pMake != nullptr ? rRow.m_pMake(rTable, rObject) : nullptr;
        }
    }
    return nullptr;
}
