// How the joints that a document names are called in the scene graph.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdsgloader_collada/ColladaDomFwd.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

// Of all nodes of a document, which must not change meanwhile.
class CColladaJointNames
{
  public:
    explicit CColladaJointNames(ColladaDOM141::domCOLLADA& rRoot);

    // The local name of the node that a joint goes by: scoped ids are what joints should be named by, but
    // some exporters write names or ids of nodes. A joint that names no node stays as it is.
    CQDCompactString GetLocalName(std::string_view strJoint) const;

  private:
    void AddNode(const ColladaDOM141::domNode& rNode);

    // The texts are the document's.
    std::unordered_set<std::string_view> m_setLocalNames;
    std::unordered_map<std::string_view, const ColladaDOM141::domNode*> m_mapNames;
    std::unordered_map<std::string_view, const ColladaDOM141::domNode*> m_mapIDs;
};
