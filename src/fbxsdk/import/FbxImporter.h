// Reads a file into a scene:
//
//     std::unique_ptr<FbxImporter> spImporter = FbxImporter::Create(pManager);
//     if (spImporter->Initialize(strFilename, pSettings) && spImporter->Import(pScene)) ...
#pragma once

#include "fbxsdk/base/FbxTime.h"
#include "qdcommon/CQDString.h"

#include <memory>
#include <vector>

class CFBXObjectTable;
class FbxIOSettings;
class FbxManager;
class FbxScene;

// What the file says of one of its animations.
struct FbxTakeInfo
{
    CQDString m_strName;
    CQDString m_strDescription;
    CQDString m_strImportName; // the name it is to have in the scene
    bool m_bSelect = true;     // whether it is imported
    FbxTimeSpan m_objLocalTimeSpan;
};

class FbxImporter
{
  public:
    ~FbxImporter();

    // Null (reported) without a manager.
    static std::unique_ptr<FbxImporter> Create(FbxManager* pManager);

    // Reads the file. False when it cannot be read or is damaged; GetErrorString says why.
    bool Initialize(const CQDString& rFilename, const FbxIOSettings* pSettings);
    const CQDString& GetErrorString() const { return m_strError; }

    // All of these tell about the file that was read.
    void GetFileVersion(int& rMajor, int& rMinor, int& rRevision) const;
    bool IsPasswordProtected() const { return m_bPasswordProtected; }
    int GetAnimStackCount() const { return static_cast<int>(m_vecTakes.size()); }
    const FbxTakeInfo& GetTakeInfo(int n) const { return m_vecTakes[static_cast<size_t>(n)]; }
    // Empty when the file names none.
    const CQDString& GetActiveAnimStackName() const { return m_strActiveStack; }

    // Fills the scene, once. False when no file was read, or it is protected by a password.
    bool Import(FbxScene* pScene);

  private:
    FbxImporter();
    FbxImporter& operator=(FbxImporter&&) = default;
    void ReadTakes();

    CQDString m_strError;
    std::unique_ptr<CFBXObjectTable> m_spTable; // given to the scene by Import
    int m_nVersion = 0;
    bool m_bPasswordProtected = false;
    std::vector<FbxTakeInfo> m_vecTakes;
    CQDString m_strActiveStack;
};
