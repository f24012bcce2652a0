// Makes scene-graph nodes of COLLADA nodes.
#pragma once

#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CColladaCameras.h"
#include "qdsgloader_collada/CColladaIgnored.h"
#include "qdsgloader_collada/CColladaLights.h"
#include "qdsgloader_collada/CColladaSkeletons.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <unordered_map>
#include <vector>

class CSGLoaderCollada;

// The nodes of one scene graph. Each COLLADA node is converted once, when it is first come upon; instances of
// it are copies. Nodes may be nested and may instance each other as deep as memory allows: the work to be
// done stands on a stack of its own.
class CColladaNodeConverter
{
  public:
    using CNodePtr = CSGNode::CNodePtr;

    // The loader converts the geometry, and must outlive the converter.
    explicit CColladaNodeConverter(CSGLoaderCollada& rLoader)
        : m_rLoader(rLoader),
          m_objSkeletons([this](ColladaDOM141::domNode& rNode) { return FindNode(rNode); })
    {}
    CColladaNodeConverter(const CColladaNodeConverter&) = delete;
    CColladaNodeConverter& operator=(const CColladaNodeConverter&) = delete;

    // What nodes instance, to be called before the first node. False (reported) without memory.
    bool LoadLibraryCameras(ColladaDOM141::domCOLLADA& rRoot) { return m_objCameras.LoadLibraries(rRoot); }
    bool LoadLibraryLights(ColladaDOM141::domCOLLADA& rRoot) { return m_objLights.LoadLibraries(rRoot); }
    // The node with everything below it. Null on failure: the fault is reported, and after it one line for
    // each node that it takes down, from the innermost to the outermost.
    CNodePtr ConvertNode(ColladaDOM141::domNode& rNode);
    // Binds the skins in a scene that is complete to their skeletons (CColladaSkeletons::Bind).
    void BindSkins(CSGNode& rScene) { m_objSkeletons.Bind(rScene); }
    // Reports what was read over in all nodes so far.
    void LogIgnored() const { m_objIgnored.LogAll(); }

    // Names of scene-graph nodes: the id, else the name; and the sid, else the name, else the id.
    static CQDCompactString GetGlobalName(const ColladaDOM141::domNode& rNode);
    static CQDCompactString GetLocalName(const ColladaDOM141::domNode& rNode);

  private:
    enum class EState
    {
        New,
        Active, // on the stack
        Done
    };
    struct CEntry
    {
        EState eState = EState::New;
        CNodePtr spNode;
        int64_t nTreeSize = 1; // nodes, with the instances in them
    };
    // One node that is being converted.
    struct CFrame
    {
        ColladaDOM141::domNode* pNode;
        CEntry* pEntry;
        int32_t nIndexInParent; // among the nodes in the node of the frame below; -1: that node instances it
        size_t nNextInstance = 0;
        size_t nNextChild = 0;
    };

    // Each takes a step with the topmost frame; false (reported) on failure.
    bool Step();
    bool Begin(const CFrame& rFrame);
    bool StepInstance(CFrame& rFrame);
    bool StepChild(CFrame& rFrame);
    bool End(const CFrame& rFrame);

    // False (reported) when the child cannot be added.
    static bool AddChild(CEntry& rParent, CSGNode* pChild, int64_t nTreeSize);
    // Null for a node that was not converted.
    CSGNode* FindNode(ColladaDOM141::domNode& rNode) const;
    void Push(ColladaDOM141::domNode& rNode, CEntry& rEntry, int32_t nIndexInParent);
    void LogFailure() const;

    CSGLoaderCollada& m_rLoader;
    std::unordered_map<ColladaDOM141::domNode*, CEntry> m_mapNodes;
    std::vector<CFrame> m_vecStack;
    int64_t m_nNumCopiedNodes = 0;
    CColladaIgnored m_objIgnored;
    CColladaCameras m_objCameras;
    CColladaLights m_objLights;
    CColladaSkeletons m_objSkeletons;
};
