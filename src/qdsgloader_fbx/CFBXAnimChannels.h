// Makes the channels of the animations of an FBX scene.
#pragma once

#include "fbxsdk/fbxsdk.h"
#include "qdscenegraph/animation/CSGAnimChannel.h"
#include "qdsgloader_fbx/CFBXAnimCurveTranslator.h"
#include "qdsgloader_fbx/CFBXInheritSampler.h"
#include "qdsgloader_fbx/CFBXNodePaths.h"

#include <array>
#include <map>
#include <optional>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

// Of what a layer animates: translation, rotation, scaling and visibility of nodes. What cannot be made is
// reported and left out: the other channels are worth more to a user than the fault.
class CFBXAnimChannels
{
  public:
    using CChannelList = std::vector<CSGAnimChannelPtr>;

    // The nodes of the scene in document order; all are borrowed. Rotations are one quaternion or three
    // angles; resampled, transforms have a key a frame.
    CFBXAnimChannels(std::span<FbxNode* const> arrHierarchy, const CFBXNodePaths& rPaths,
                     bool bKeepQuaternions, bool bResample);

    // In the order of the nodes, those of "inherit" transforms last. The frames of the range are those that
    // are sampled.
    CChannelList LoadLayer(const FbxAnimLayer& rLayer, const CFBXKeyRange& rRange);

  private:
    using CSamplerPtr = CSGAnimChannel::CSamplerPtr;
    using CWanted = std::array<bool, CFBXAnimCurveTranslator::NUM_CURVES>;

    void LoadVector(const FbxNode& rNode, const char* szProperty, const FbxDouble3& rRest,
                    const char* szTransform);
    void LoadRotation(const FbxNode& rNode);
    void LoadVisibility(const FbxNode& rNode);

    // The curves of X, Y and Z, and which of them are worth a channel: those with keys or with another value
    // than at rest; and, for who plays one animation after the other, all that another layer moves. False
    // when none is.
    bool LoadCurves(const FbxNode& rNode, const char* szProperty, const FbxDouble3& rRest,
                    CFBXAnimCurveTranslator::CCurves& rarrCurves, CWanted& rarrWanted);
    // Nothing (reported) when too many keys are made of one curve for different things.
    std::optional<CFBXCurveKeys> LoadCurve(const FbxNode& rNode, const FbxAnimCurve& rCurve, bool bResample);
    // Whether some layer animates the property by another curve node than that.
    bool IsAnimatedElsewhere(const FbxNode& rNode, std::string_view strProperty,
                             const FbxAnimCurveNode* pCurveNode);
    void AddTransformChannel(const FbxNode& rNode, const char* szTransform, ETarget eTarget,
                             const CSamplerPtr& spSampler);
    void AddChannel(const CQDString& rName, const CSamplerPtr& spSampler, const CSGRefPathPtr& spPath);

    std::span<FbxNode* const> m_arrHierarchy;
    std::unordered_map<const FbxObject*, size_t> m_mapPlaces; // in the hierarchy
    // For each node and property the first curve node with keys, and whether there is another one.
    std::map<std::pair<const FbxNode*, std::string_view>, std::pair<const FbxAnimCurveNode*, bool>>
        m_mapAnimated;
    const CFBXNodePaths& m_rPaths;
    CFBXInheritSampler m_objInheritSampler;
    bool m_bKeepQuaternions;
    bool m_bResample;
    CFBXKeyBudget m_objBudget; // of all layers
    // Of the layer that is being loaded:
    const FbxAnimLayer* m_pLayer = nullptr;
    CFBXKeyRange m_objRange;
    CChannelList m_vecChannels;
};
