// Samples how nodes take over the scale of those above them.
#pragma once

#include "fbxsdk/fbxsdk.h"
#include "qdscenegraph/animation/CSGAnimSampler.h"
#include "qdsgloader_fbx/CFBXCurveKeys.h"

#include <span>
#include <vector>

// The matrix of an "inherit" transform follows from curves of the node and of those above it: there is no
// curve for it, it can only be sampled. Most rigs have such transforms, and curves that scale nothing: for
// these there is no matrix to sample.
class CFBXInheritSampler
{
  public:
    struct CSampled
    {
        const FbxNode* m_pNode;
        boost::intrusive_ptr<CSGAnimSampler> m_spSampler; // 16 floats, as CSGATF_XFrmTransform3 takes them
    };

    // The nodes of the scene in document order; the scene must outlive it.
    explicit CFBXInheritSampler(std::span<FbxNode* const> arrHierarchy);

    // The nodes with such a transform that the layer changes, with a key at each frame; none (reported) when
    // those are too many.
    std::vector<CSampled> Sample(const FbxAnimLayer& rLayer, const CFBXKeyRange& rRange,
                                 CFBXKeyBudget& rBudget) const;

  private:
    struct CNode
    {
        const FbxNode* m_pNode;
        size_t m_nParent; // its place in the list; of a root its own
        bool m_bScaled;   // the node or one above it has another scale than 1 at some time
        bool m_bInherits; // has the transform, below a node that is scaled
    };
    // A node whose matrix is wanted, or one above such a node.
    struct CPosed
    {
        const FbxNode* m_pNode = nullptr;
        size_t m_nParent = 0;
        bool m_bWanted = false;
        FbxGlobalPose m_objPose{};
        std::vector<float> m_vecMatrices{};
    };
    using CPosedList = std::vector<CPosed>;

    CPosedList FindPosed(const FbxAnimLayer& rLayer) const;
    static void PoseAt(CPosedList& rPosed, const FbxAnimLayer& rLayer, FbxTime objTime);

    std::vector<CNode> m_vecNodes;
    bool m_bAnyInherits = false;
};
