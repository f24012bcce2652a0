#include "fbxsdk/import/FbxImporter.h"

#include "fbxsdk/base/CFBXTimeScale.h"
#include "fbxsdk/import/CFBXSceneBuilder.h"
#include "fbxsdk/objects/CFBXObjectTable.h"
#include "fbxsdk/objects/FBXObjectName.h"
#include "qdcommon/CLogChecks.h"

FbxImporter::FbxImporter() = default;

FbxImporter::~FbxImporter() = default;

std::unique_ptr<FbxImporter> FbxImporter::Create(FbxManager* pManager)
{
    QD_CHECK_ARG(pManager, nullptr);
    return std::unique_ptr<FbxImporter>(new FbxImporter);
}

bool FbxImporter::Initialize(const CQDString& rFilename, const FbxIOSettings* pSettings)
{
    QD_CHECK_ARG(pSettings, false);
    *this = FbxImporter();
    std::unique_ptr<CFBXDocument> spDocument = CFBXDocument::Load(rFilename, m_strError);
    if (spDocument != nullptr)
    {
        m_nVersion = spDocument->GetVersion();
        m_spTable = CFBXObjectTable::Create(std::move(spDocument), m_strError);
    }
    if (m_spTable == nullptr)
    {
        m_strError = rFilename + ": " + m_strError;
        return false;
    }
    m_bPasswordProtected = m_spTable->IsPasswordProtected();
    m_strActiveStack = m_spTable->GetActiveStackName();
    ReadTakes();
    return true;
}

void FbxImporter::ReadTakes()
{
    const CFBXTimeScale objScale(*m_spTable);
    for (const CFBXObject& rObject : m_spTable->GetObjects())
    {
        if (rObject.strClass == "AnimationStack")
        {
            const CFBXProperties& rProperties = rObject.objProperties;
            FbxTakeInfo& rTake = m_vecTakes.emplace_back();
            rTake.m_strName = rObject.strName;
            rTake.m_strDescription = LimitFBXName(rProperties.GetString("Description"));
            rTake.m_strImportName = LimitFBXName(rProperties.GetString("ImportName"));
            if (rTake.m_strImportName.empty())
            {
                rTake.m_strImportName = rTake.m_strName;
            }
            rTake.m_objLocalTimeSpan = {objScale(rProperties.GetInt64("LocalStart")),
                                        objScale(rProperties.GetInt64("LocalStop"))};
        }
    }
}

void FbxImporter::GetFileVersion(int& rMajor, int& rMinor, int& rRevision) const
{
    rMajor = m_nVersion / 1000;
    rMinor = m_nVersion / 100 % 10;
    rRevision = m_nVersion / 10 % 10;
}

bool FbxImporter::Import(FbxScene* pScene)
{
    QD_CHECK_ARG(pScene, false);
    QD_CHECK_NOT_NULL(m_spTable, false);
    if (m_bPasswordProtected)
    {
        m_strError = "The file is protected by a password";
        return false;
    }
    CFBXSceneBuilder(*pScene, std::move(m_spTable)).Build();
    return true;
}
