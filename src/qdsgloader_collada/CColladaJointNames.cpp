#include "qdsgloader_collada/CColladaJointNames.h"

#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaNodeConverter.h"

#include <vector>

namespace
{

// On a stack of its own: documents may be nested deeper than calls.
template <class PARENT>
void PushNodes(const PARENT& rParent, std::vector<const domNode*>& rvecStack)
{
    const auto arrNodes = AsSpan(rParent.getNode_array());
    for (size_t n = arrNodes.size(); n-- > 0;)
    {
        rvecStack.push_back(arrNodes[n].cast());
    }
}

} // namespace

CColladaJointNames::CColladaJointNames(domCOLLADA& rRoot)
{
    std::vector<const domNode*> vecStack;
    const auto AddTrees = [&](const auto& rParent) {
        PushNodes(rParent, vecStack);
        while (!vecStack.empty())
        {
            const domNode& rNode = *vecStack.back();
            vecStack.pop_back();
            AddNode(rNode);
            PushNodes(rNode, vecStack);
        }
    };
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_visual_scenes_array()))
    {
        for (const auto& rspScene : AsSpan(rspLibrary->getVisual_scene_array()))
        {
            AddTrees(*rspScene);
        }
    }
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_nodes_array()))
    {
        AddTrees(*rspLibrary);
    }
}

void CColladaJointNames::AddNode(const domNode& rNode)
{
    m_setLocalNames.insert(FirstText({rNode.getSid(), rNode.getName(), rNode.getId()}));
    m_mapNames.try_emplace(Text(rNode.getName()), &rNode);
    m_mapIDs.try_emplace(Text(rNode.getId()), &rNode);
}

CQDCompactString CColladaJointNames::GetLocalName(std::string_view strJoint) const
{
    if (!strJoint.empty() && !m_setLocalNames.contains(strJoint))
    {
        for (const auto* pMap : {&m_mapNames, &m_mapIDs})
        {
            if (const auto it = pMap->find(strJoint); it != pMap->end())
            {
                return CColladaNodeConverter::GetLocalName(*it->second);
            }
        }
    }
    return strJoint;
}
