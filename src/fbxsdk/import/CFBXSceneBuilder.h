// Makes a scene of the objects of a file.
#pragma once

#include <memory>
#include <unordered_set>

class CFBXObjectTable;
class FbxNode;
class FbxScene;

class CFBXSceneBuilder
{
  public:
    // The scene must outlive the builder. It loses what it held.
    CFBXSceneBuilder(FbxScene& rScene, std::unique_ptr<CFBXObjectTable> spTable);

    void Build();

  private:
    void Connect();
    void BuildTree();
    // The node, or above it the one that has no parent, or one of a circle.
    static FbxNode& FindTop(FbxNode& rNode);
    void MoveToRoot(FbxNode& rNode);
    void AddReachable(FbxNode& rTop, int nTopDepth);
    void PlaceNodes();

    FbxScene& m_rScene;
    std::unordered_set<const FbxNode*> m_setReached; // from the root
};
