// The skeletons that the skinned nodes of one scene graph are to be bound to.
#pragma once

#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class CColladaSceneIndex;
class CColladaSkinSet;
class CSGCopyData;
class CSGSkinBinding;

// Joints may stand anywhere in a document, before or behind what they move, so they are bound when the scene
// is complete.
class CColladaSkeletons
{
  public:
    // The node that was made of an element; null when none was.
    using CGetNode = std::function<CSGNode*(ColladaDOM141::domNode&)>;

    explicit CColladaSkeletons(CGetNode fnGetNode) : m_fnGetNode(std::move(fnGetNode)) {}

    // Gives a node that shows the geometry of the skins its skin bindings. A skeleton that cannot be found is
    // left out (reported). False (reported) on failure.
    bool AddSkins(const CColladaSkinSet& rSkins, ColladaDOM141::domInstance_controller& rInstance,
                  CSGNode& rNode);
    // Goes through a tree that was copied: its skins have copies, which follow the copies of its skeletons.
    // False (reported) when those come to too much.
    bool AddCopies(const CSGNode& rOriginal, const CSGCopyData& rCopyData);
    // Binds the joints of all skins in a scene. A joint is the first node of its local name in the trees of
    // the skeletons, in order, else in the scene. A skeleton that is in the scene by its instances alone is
    // the first of them; one that is not there at all gets a copy added to the scene. A skin of which a
    // vertex follows a joint without a node is taken away (reported).
    void Bind(CSGNode& rScene);

  private:
    struct CInstance
    {
        ColladaDOM141::domInstance_controller* pElement;
        std::vector<ColladaDOM141::domNode*> vecSkeletons;
        bool bReported = false;
    };
    struct CSkinned
    {
        size_t nInstance;
        // For a copy, the copies of skeletons that were copied with it; else empty. Null: not copied.
        std::vector<CSGNode*> vecCopies;
    };

    bool TakeFromBudget(const CSGNode& rNode, size_t nSkeletons);
    CSGNode* GetSkeleton(const CSkinned& rSkinned, size_t nSkeleton) const;
    // Where the skeleton is in the scene; null when it is not.
    CSGNode* FindInScene(const CColladaSceneIndex& rIndex, CSGNode* pSkeleton) const;
    bool AddMissingSkeletons(const CColladaSceneIndex& rIndex, CSGNode& rScene);
    bool AddCopyToScene(CSGNode& rSkeleton, CSGNode& rScene);
    void BindNode(const CColladaSceneIndex& rIndex, CSGNode& rNode, const CSkinned& rSkinned);

    CGetNode m_fnGetNode;
    std::vector<CInstance> m_vecInstances;
    std::unordered_map<const CSGNode*, CSkinned> m_mapSkinned;
    std::unordered_set<const CSGNode*> m_setAdded; // the trees whose copies were added to the scene
    size_t m_nNumCopiedNodes = 0;                  // by them
    size_t m_nNumJoints = 0;                       // of all skins, and skeletons
};
