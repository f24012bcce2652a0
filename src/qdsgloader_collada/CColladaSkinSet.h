// The skins made of one <skin>: one for each piece of its geometry.
#pragma once

#include "qdscenegraph/node/CSGNode.h"
#include "qdsgloader_collada/CColladaSkin.h"

#include <unordered_map>
#include <vector>

// All instances of the controller share them.
class CColladaSkinSet : public CRefObject
{
  public:
    using CSkinPtr = boost::intrusive_ptr<CColladaSkin>;

    // False (reported) for null.
    bool AddSkin(const CSkinPtr& spSkin);

    // Gives a node that shows the geometry, as a whole or divided over children by material, a skin binding
    // set wherever there is a piece of it. The joints are not bound yet: their nodes may be still to come.
    // Adds the nodes that got one. False (reported) on failure.
    bool BindToSkeletons(CSGNode& rNode, std::vector<CSGNode*>& rvecSkinned) const;

  private:
    bool AddBindings(CSGNode& rNode, std::vector<CSGNode*>& rvecSkinned) const;

    std::unordered_map<const CSGVertexBuffer*, CSkinPtr> m_mapSkins; // by the vertices they are made for
};
