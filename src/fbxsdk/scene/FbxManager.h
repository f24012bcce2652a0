// Where all use of the reader begins; it keeps the scenes.
#pragma once

#include <memory>
#include <vector>

class FbxScene;

class FbxManager
{
  public:
    ~FbxManager();
    FbxManager(const FbxManager&) = delete;
    FbxManager& operator=(const FbxManager&) = delete;

    static std::unique_ptr<FbxManager> Create();

    // The newest version of files that are read.
    static void GetFileFormatVersion(int& rMajor, int& rMinor, int& rRevision);

  private:
    friend class FbxScene;

    FbxManager();

    std::vector<std::unique_ptr<FbxScene>> m_vecScenes;
};
