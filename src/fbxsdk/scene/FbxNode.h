// A node of the scene's tree.
#pragma once

#include "fbxsdk/base/FbxAMatrix.h"
#include "fbxsdk/base/FbxObject.h"
#include "fbxsdk/base/FbxTime.h"

#include <memory>

class CFBXObjectTable;
class FbxAnimLayer;
class FbxNodeAttribute;
class FbxSurfaceMaterial;

// The part of a node's transform that can be animated.
struct FbxLocalPose
{
    FbxDouble3 T{};
    FbxDouble3 R{}; // degrees
    FbxDouble3 S{1, 1, 1};
};

// Where a node is in the world, as far as its children need to know.
struct FbxGlobalPose
{
    FbxAMatrix m_objTransform;
    FbxAMatrix m_objRotation;         // of the node and all above it, without their scaling
    FbxDouble3 m_objScaling{1, 1, 1}; // the node's own
};

class FbxNode final : public FbxObject
{
  public:
    // How the rotation and scaling of a node (r, s) go together with those of its parent (R, S).
    enum EInheritType
    {
        eInheritRrSs,
        eInheritRSrs, // a plain product of transforms
        eInheritRrs   // without the parent's own scaling
    };

    // How a node's size changes by the nodes above it, at rest or at some time.
    enum EScaling
    {
        eUnscaled,
        eScaledEvenly, // which goes through rotations unchanged
        eScaledUnevenly
    };

    // Nodes nested deeper are cut off from their parents.
    static constexpr int MAX_DEPTH = 2048;

    static std::unique_ptr<FbxNode> Create(const CFBXObjectTable& rTable, const CFBXObject& rObject);
    // The root of a scene, which files know by its id only.
    static std::unique_ptr<FbxNode> CreateRoot();

    // Null for the root. Of a node that is connected to several, the first.
    FbxNode* GetParent() const { return m_pParent; }
    int GetChildCount() const { return static_cast<int>(m_vecChildren.size()); }
    FbxNode* GetChild(int n) const { return m_vecChildren[static_cast<size_t>(n)]; }

    int GetNodeAttributeCount() const { return static_cast<int>(m_vecAttributes.size()); }
    FbxNodeAttribute* GetNodeAttributeByIndex(int n) const { return m_vecAttributes[static_cast<size_t>(n)]; }
    // Puts another one, of the same scene, in its place. False (reported) when there is no such index.
    bool SetNodeAttribute(int n, FbxNodeAttribute* pAttribute);

    // In the order by which polygons refer to them.
    int GetMaterialCount() const { return static_cast<int>(m_vecMaterials.size()); }
    FbxSurfaceMaterial* GetMaterial(int n) const { return m_vecMaterials[static_cast<size_t>(n)]; }

    // Where no animation says otherwise.
    const FbxLocalPose& GetRestPose() const { return m_objRestPose; }
    const FbxDouble3& GetLclTranslation() const { return m_objRestPose.T; }
    const FbxDouble3& GetLclRotation() const { return m_objRestPose.R; }
    const FbxDouble3& GetLclScaling() const { return m_objRestPose.S; }

    // What of a node's transform is never animated. Angles are in degrees, about X first.
    const FbxDouble3& GetRotationOffset() const { return m_objRotationOffset; }
    const FbxDouble3& GetRotationPivot() const { return m_objRotationPivot; }
    const FbxDouble3& GetPreRotation() const { return m_objPreRotation; }
    const FbxDouble3& GetPostRotation() const { return m_objPostRotation; }
    const FbxDouble3& GetScalingOffset() const { return m_objScalingOffset; }
    const FbxDouble3& GetScalingPivot() const { return m_objScalingPivot; }
    // Of the attributes only: children do not inherit it.
    FbxAMatrix GetGeometricTransform() const;

    // As the file says it: may be a number that is none of the orders. Where the file does not switch
    // rotation on (RotationActive), or for limits only, its order, pre- and post-rotation do not count: they
    // are those of a node without.
    EFbxRotationOrder GetRotationOrder() const { return m_eRotationOrder; }
    EInheritType GetTransformationInheritType() const { return m_eInheritType; }
    // Whether the node is seen when no animation says otherwise.
    bool GetVisibility() const { return m_bVisibility; }
    bool GetShow() const { return m_bShow; }

    // The curves' values where the layer (null for none) has curves, else those at rest.
    FbxLocalPose EvaluateLocalPose(const FbxAnimLayer* pLayer, FbxTime objTime) const;

    // Pre-rotation, rotation and inverse post-rotation.
    FbxAMatrix GetRotationMatrix(const FbxLocalPose& rPose) const;
    // T * Roff * Rp * Rpre * R * Rpost^-1 * Rp^-1 * Soff * Sp * S * Sp^-1: the SDK's documentation of
    // "Computing transformation matrices".
    FbxAMatrix GetLocalMatrix(const FbxLocalPose& rPose) const;
    // What has to stand between Roff * Rp and Rpre of the local matrix for the plain product of the parent's
    // transform with it to be the node's; the identity for eInheritRSrs, and where nothing above is scaled
    // unevenly.
    FbxAMatrix GetInheritMatrix(const FbxGlobalPose& rParent, const FbxLocalPose& rPose) const;

    EScaling GetScalingAbove() const { return m_eScalingAbove; }

    // By the parent's; the root's is the default one.
    FbxGlobalPose GetGlobalPose(const FbxGlobalPose& rParent, const FbxLocalPose& rPose) const;
    FbxGlobalPose EvaluateGlobalPose(const FbxAnimLayer* pLayer, FbxTime objTime) const;
    // Where no animation says otherwise: known, once the scene is complete.
    const FbxGlobalPose& GetGlobalRestPose() const { return m_objGlobalRestPose; }
    const FbxAMatrix& EvaluateGlobalTransform() const { return m_objGlobalRestPose.m_objTransform; }
    FbxAMatrix EvaluateGlobalTransform(const FbxAnimLayer* pLayer, FbxTime objTime) const
    {
        return EvaluateGlobalPose(pLayer, objTime).m_objTransform;
    }

  protected:
    void OnConnected() override;

  private:
    friend class CFBXSceneBuilder;

    explicit FbxNode(const CFBXObject* pObject);
    // Called once, after OnConnected, for a parent before its children.
    void OnPlaced();
    // Where the scaling moves the origin, in the space that the rotation turns.
    FbxDouble3 GetScalingShift(const FbxLocalPose& rPose) const;
    // What this node has of the scaling above it.
    FbxAMatrix GetInheritedScaling(const FbxGlobalPose& rParent) const;

    FbxNode* m_pParent = nullptr;
    std::vector<FbxNode*> m_vecChildren;
    std::vector<FbxNodeAttribute*> m_vecAttributes;
    std::vector<FbxSurfaceMaterial*> m_vecMaterials;
    FbxLocalPose m_objRestPose;
    FbxDouble3 m_objRotationOffset{};
    FbxDouble3 m_objRotationPivot{};
    FbxDouble3 m_objPreRotation{};
    FbxDouble3 m_objPostRotation{};
    FbxDouble3 m_objScalingOffset{};
    FbxDouble3 m_objScalingPivot{};
    FbxDouble3 m_objGeometricTranslation{};
    FbxDouble3 m_objGeometricRotation{};
    FbxDouble3 m_objGeometricScaling{1, 1, 1};
    EFbxRotationOrder m_eRotationOrder = eEulerXYZ;
    EInheritType m_eInheritType = eInheritRrSs;
    EScaling m_eScalingAbove = eUnscaled;
    FbxGlobalPose m_objGlobalRestPose;
    bool m_bVisibility = true;
    bool m_bLclScalingAnimated = false; // by some layer, whether it has keys or not
    bool m_bShow = true;
};
