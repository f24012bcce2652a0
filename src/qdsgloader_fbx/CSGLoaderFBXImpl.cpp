// Files and documents.
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include "fbxsdk/fbxsdk.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdsgloader_fbx/CFBXMaterials.h"
#include "qdsgloader_fbx/CFBXNodePaths.h"
#include "qdsgloader_fbx/CFBXSceneDump.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <exception>
#include <filesystem>

namespace
{

// From the last to the first.
std::vector<FbxNode*> GetChildren(const FbxNode& rNode)
{
    std::vector<FbxNode*> vecChildren;
    for (int n = rNode.GetChildCount(); n-- > 0;)
    {
        vecChildren.push_back(rNode.GetChild(n));
    }
    return vecChildren;
}

} // namespace

CSGLoaderFBXImpl::CSGLoaderFBXImpl(const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader,
                                   bool bKeepQuaternions, bool bResample)
    : m_spTextureLoader(spTextureLoader),
      m_bKeepQuaternions(bKeepQuaternions),
      m_bResample(bResample)
{}

CSGLoaderFBXImpl::~CSGLoaderFBXImpl() = default;

bool CSGLoaderFBXImpl::CanLoadFile(const CQDString& rStrFilename) const
{
    return std::filesystem::path(rStrFilename).extension() == ".fbx";
}

bool CSGLoaderFBXImpl::ClearLoadData()
{
    m_mapNodes.clear();
    m_spMaterials.reset();
    m_spNodePaths.reset();
    m_vecHierarchy.clear();
    m_strActiveAnimStack.clear();
    m_spDefaultAnimation.reset();
    m_vecAnimations.clear();
    m_bAnimationsLoaded = false;
    m_pFBXScene = nullptr;
    m_pFBXManager.reset();
    m_strFilename.clear();
    return true;
}

bool CSGLoaderFBXImpl::LoadFile(const CQDString& rStrFilename)
{
    QD_ASSERT(ClearLoadData(), false);
    if (!CanLoadFile(rStrFilename))
    {
        Log(QD_FBX, LOG_ERROR, "Unrecognized extension for file '%s'", rStrFilename);
        return false;
    }
    try
    {
        if (LoadFBXFile(rStrFilename))
        {
            m_strFilename = rStrFilename;
            return true;
        }
    }
    catch (const std::exception& rException) // there is no memory
    {
        Log(QD_FBX, LOG_ERROR, "Failed to load '%s': %s", rStrFilename, rException.what());
    }
    ClearLoadData();
    return false;
}

bool CSGLoaderFBXImpl::LoadFBXFile(const CQDString& rStrFilename)
{
    Log(QD_FBX, LOG_INFO, "Started loading '%s'", rStrFilename);
    m_pFBXManager = FbxManager::Create();
    if (!m_pFBXManager)
    {
        Log(QD_FBX, LOG_ERROR, "Unable to create the FBX SDK manager");
        return false;
    }
    if (!LoadScene(rStrFilename))
    {
        return false;
    }
    if (QD_FBX.Accepts(LOG_DETAIL))
    {
        CFBXSceneDump::Log(m_vecHierarchy);
    }
    Log(QD_FBX, LOG_INFO, "Finished loading '%s'", rStrFilename);
    return true;
}

bool CSGLoaderFBXImpl::LoadScene(const CQDString& rStrFilename)
{
    const std::unique_ptr<FbxIOSettings> spIOSettings = FbxIOSettings::Create(m_pFBXManager.get(), IOSROOT);
    QD_CHECK_CREATED(spIOSettings, false);
    const std::unique_ptr<FbxImporter> spImporter = FbxImporter::Create(m_pFBXManager.get());
    QD_CHECK_CREATED(spImporter, false);
    if (!spImporter->Initialize(rStrFilename, spIOSettings.get()))
    {
        Log(QD_FBX, LOG_ERROR, "Call to FbxImporter::Initialize() failed.");
        Log(QD_FBX, LOG_ERROR, "Error returned: %s", spImporter->GetErrorString());
        return false;
    }
    int nMajor = 0;
    int nMinor = 0;
    int nRevision = 0;
    FbxManager::GetFileFormatVersion(nMajor, nMinor, nRevision);
    Log(QD_FBX, LOG_INFO, "FBX version number for this FBX SDK is %d.%d.%d", nMajor, nMinor, nRevision);
    spImporter->GetFileVersion(nMajor, nMinor, nRevision);
    Log(QD_FBX, LOG_INFO, "FBX version number for file %s is %d.%d.%d", rStrFilename, nMajor, nMinor,
        nRevision);
    m_strActiveAnimStack = spImporter->GetActiveAnimStackName();
    Log(QD_FBX, LOG_INFO, "Animation Stack Information");
    Log(QD_FBX, LOG_INFO, "    Number of Animation Stacks: %d", spImporter->GetAnimStackCount());
    Log(QD_FBX, LOG_INFO, "    Current Animation Stack: \"%s\"", spImporter->GetActiveAnimStackName());
    for (int32_t n = 0; n < spImporter->GetAnimStackCount(); ++n)
    {
        const FbxTakeInfo& rTake = spImporter->GetTakeInfo(n);
        Log(QD_FBX, LOG_INFO,
            "    Animation Stack %d: name \"%s\", description \"%s\", import name \"%s\", "
            "import state %s",
            n, rTake.m_strName, rTake.m_strDescription, rTake.m_strImportName,
            rTake.m_bSelect ? "true" : "false");
    }
    if (spImporter->IsPasswordProtected())
    {
        Log(QD_FBX, LOG_ERROR, "Password required.  Input of same not implemented");
        return false;
    }
    m_pFBXScene = FbxScene::Create(m_pFBXManager.get(), rStrFilename);
    QD_CHECK_CREATED(m_pFBXScene, false);
    if (!spImporter->Import(m_pFBXScene))
    {
        Log(QD_FBX, LOG_ERROR, "Call to FbxImporter::Import() failed.");
        Log(QD_FBX, LOG_ERROR, "Error returned: %s", spImporter->GetErrorString());
        return false;
    }
    m_vecHierarchy.push_back(m_pFBXScene->GetRootNode());
    for (std::vector<FbxNode*> vecWaiting = GetChildren(*m_vecHierarchy.front()); !vecWaiting.empty();)
    {
        m_vecHierarchy.push_back(vecWaiting.back());
        vecWaiting.pop_back();
        const std::vector<FbxNode*> vecChildren = GetChildren(*m_vecHierarchy.back());
        vecWaiting.insert(vecWaiting.end(), vecChildren.begin(), vecChildren.end());
    }
    m_spNodePaths = std::make_unique<CFBXNodePaths>(m_vecHierarchy);
    return true;
}

boost::intrusive_ptr<CSGNode> CSGLoaderFBXImpl::LoadSceneGraph()
{
    if (m_pFBXScene == nullptr)
    {
        Log(QD_FBX, LOG_ERROR, "Tried to load scene graph when no file was loaded.");
        return nullptr;
    }
    Log(QD_FBX, LOG_INFO, "Loading SG from fbx scene.");
    m_mapNodes.clear();
    try
    {
        PreprocessFBXHierarchy();
        const CSGNode::CNodePtr spRoot = ConvertHierarchy();
        QD_CHECK_NOT_NULL(spRoot, nullptr);
        QD_CHECK_CALL(ProcessFBXMeshes(), nullptr);
        m_mapNodes.clear();
        Log(QD_FBX, LOG_INFO, "Finished loading SG from fbx scene.");
        return spRoot;
    }
    catch (const std::exception& rException) // there is no memory
    {
        Log(QD_FBX, LOG_ERROR, "Failed to load the scene graph of '%s': %s", m_strFilename,
            rException.what());
        ClearLoadData(); // a mesh may be changed by half
        return nullptr;
    }
}

EUpAxis CSGLoaderFBXImpl::LoadUpAxis()
{
    if (m_pFBXScene == nullptr)
    {
        Log(QD_FBX, LOG_ERROR, "Defaulting to Up axis Z");
        return UP_AXIS_Z;
    }
    int nAxisSign = 0;
    const FbxAxisSystem::EUpVector eUpVector =
        m_pFBXScene->GetGlobalSettings().GetAxisSystem().GetUpVector(nAxisSign);
    const auto LogAxis = [&](const char* szAxis, EUpAxis eAxis) {
        Log(QD_FBX, LOG_INFO, "Up axis is %s, sign = %d", szAxis, nAxisSign);
        QD_ASSERT(nAxisSign > 0, UP_AXIS_Z);
        return eAxis;
    };
    switch (eUpVector)
    {
    case FbxAxisSystem::eXAxis:
        return LogAxis("X", UP_AXIS_X);
    case FbxAxisSystem::eYAxis:
        return LogAxis("Y", UP_AXIS_Y);
    default:
        return LogAxis("Z", UP_AXIS_Z);
    }
}
