#include "fbxsdk/scene/FbxManager.h"

#include "fbxsdk/scene/FbxScene.h"

FbxManager::FbxManager() = default;

FbxManager::~FbxManager() = default;

std::unique_ptr<FbxManager> FbxManager::Create() { return std::unique_ptr<FbxManager>(new FbxManager); }

void FbxManager::GetFileFormatVersion(int& rMajor, int& rMinor, int& rRevision)
{
    rMajor = 7;
    rMinor = 7;
    rRevision = 0;
}
