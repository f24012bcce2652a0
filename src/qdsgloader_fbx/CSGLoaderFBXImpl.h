// What stands behind CSGLoaderFBX.
#pragma once

#include "qdscenegraph/material/CSGMaterial.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/texture/CSGTexture.h"
#include "qdscenegraph/transform/CSGXFrm_List.h"
#include "qdsgloader_fbx/CSGLoaderFBX.h"

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>

class CFBXAnimChannels;
class CFBXExtraAttributes;
class CFBXGeometryCache;
class CFBXMaterials;
class CFBXNodePaths;
class CFBXSkinBuilder;
class CSGSurface;
class FbxAnimStack;
class FbxGeometryConverter;
class FbxManager;
class FbxMesh;
class FbxNode;
class FbxScene;
class FbxSurfaceMaterial;

// The file's scene, and the materials, images and animations made of it, are held until the next LoadFile;
// every LoadSceneGraph makes new nodes, which share the materials.
class CSGLoaderFBXImpl final : public CSGLoaderFBX
{
  public:
    CSGLoaderFBXImpl(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader, bool bKeepQuaternions,
                     bool bResample);
    ~CSGLoaderFBXImpl() override;

    bool CanLoadFile(const CQDString& rStrFilename) const override;
    bool LoadFile(const CQDString& rStrFilename) override;
    boost::intrusive_ptr<CSGNode> LoadSceneGraph() override;
    EUpAxis LoadUpAxis() override;
    // One for each animation stack that has curves, named by it. The loader keeps them.
    bool LoadAnimations(std::vector<CSGAnimation*>& rvecAnimations) override;
    boost::intrusive_ptr<CSGAnimation> LoadDefaultAnimation() override;
    // The first of the name; null when there is none.
    virtual boost::intrusive_ptr<CSGAnimation> LoadAnimation(const CQDString& rStrName);

  private:
    // CSGLoaderFBXImpl.cpp: files and documents
    bool ClearLoadData();
    bool LoadFBXFile(const CQDString& rStrFilename);
    bool LoadScene(const CQDString& rStrFilename);

    // CSGLoaderFBXImpl_Preprocess.cpp: the file's scene is brought into the form that is converted
    void PreprocessFBXHierarchy();
    // False (reported) when the mesh cannot become one of triangles.
    bool PreprocessFBXMesh(FbxNode& rNode, FbxMesh& rMesh, FbxGeometryConverter& rConverter,
                           bool bTriangulated);

    // CSGLoaderFBXImpl_Nodes.cpp
    CSGNode::CNodePtr ConvertHierarchy();
    CSGNode::CNodePtr ConvertNode(const FbxNode& rFBXNode);
    bool AddLocalTransformsToSGNode(CSGNode& rNode, const FbxNode& rFBXNode) const;

    // CSGLoaderFBXImpl_Meshes.cpp
    // Extra attributes come down from parent to child.
    bool ProcessFBXMeshes();
    bool ProcessFBXMesh(CSGNode& rNode, const FbxNode& rFBXNode, const FbxMesh& rMesh,
                        const CFBXExtraAttributes& rAttributes, CFBXGeometryCache& rGeometryCache,
                        CFBXSkinBuilder& rSkinBuilder);

    // CSGLoaderFBXImpl_Materials.cpp
    void PreprocessFBXMaterial(const FbxSurfaceMaterial& rMaterial);
    // The mesh is what the node shows: it knows the numbers of the texture coordinates.
    bool CreateMaterialData(CSGNode& rNode, const FbxSurfaceMaterial& rMaterial, const FbxMesh& rMesh,
                            const CFBXExtraAttributes& rAttributes);

    // CSGLoaderFBXImpl_Animation.cpp: once for a file
    void LoadAllAnimations();
    void LoadAnimStacks();
    // Of a stack of one layer or none. Null (reported) when it has nothing that can be played.
    CSGAnimation::CAnimationPtr LoadAnimStack(const FbxAnimStack& rStack, CFBXAnimChannels& rChannels) const;

    boost::intrusive_ptr<CSGTextureLoader> m_spTextureLoader;
    bool m_bKeepQuaternions; // rotations are one quaternion, not three angles
    bool m_bResample;        // animated transforms get a key each frame
    CQDString m_strFilename;
    std::unique_ptr<FbxManager> m_pFBXManager;
    FbxScene* m_pFBXScene = nullptr;              // the manager's; null when no file is loaded
    std::vector<FbxNode*> m_vecHierarchy;         // all nodes of the scene, each before those below it
    std::unique_ptr<CFBXMaterials> m_spMaterials; // null: none was converted yet
    // The nodes of the scene graph that is being loaded.
    std::unordered_map<const FbxNode*, CSGNode*> m_mapNodes;
    std::unique_ptr<CFBXNodePaths> m_spNodePaths; // of the hierarchy
    CQDString m_strActiveAnimStack;
    bool m_bAnimationsLoaded = false;
    std::vector<CSGAnimation::CAnimationPtr> m_vecAnimations;
    CSGAnimation::CAnimationPtr m_spDefaultAnimation; // of the active stack, else of the first
};
