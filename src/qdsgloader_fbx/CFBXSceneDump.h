// Writes a scene, as it was read, to the log: for those who wonder what a file has.
#pragma once

#include <span>

class FbxNode;

class CFBXSceneDump
{
  public:
    // Names and kinds, materials, and transforms at rest, at the detail level. The nodes of a whole scene,
    // each before those below it.
    static void Log(std::span<FbxNode* const> arrHierarchy);
};
