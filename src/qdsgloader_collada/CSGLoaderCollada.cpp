// Files and documents.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "animxml/CAnimationSliceData.h"
#include "animxml/CBexnelParser.h"
#include "animxml/CXMLEltParse_DocAnimSlice.h"
#include "daedom/CDaeFile.h"
#include "qdcommon/CLogChecks.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdsgloader_collada/CColladaController.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaGeometrySet.h"
#include "qdsgloader_collada/CColladaJointNames.h"
#include "qdsgloader_collada/CColladaMaterials.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <boost/filesystem/operations.hpp>

#include <algorithm>

namespace
{

CQDString GetExtension(const CQDString& rStrFilename)
{
    return boost::filesystem::path(rStrFilename).extension().string();
}

} // namespace

CSGLoaderCollada::CSGLoaderCollada() : m_spDataSources(std::make_unique<CColladaDataSourceCache>()) {}
CSGLoaderCollada::~CSGLoaderCollada() = default;

boost::intrusive_ptr<CSGLoaderCollada> CSGLoaderCollada::Create(
    const boost::intrusive_ptr<CSGTextureLoader>& spTextureLoader)
{
    QD_CHECK_ARG(spTextureLoader, nullptr);
    boost::intrusive_ptr<CSGLoaderCollada> spLoader = new CSGLoaderCollada;
    spLoader->m_spTextureLoader = spTextureLoader;
    return spLoader;
}

void CSGLoaderCollada::SetTexturePool(const boost::intrusive_ptr<CSGTexturePool>& spTexturePool)
{
    m_spTexturePool = spTexturePool;
}

bool CSGLoaderCollada::CanLoadFile(const CQDString& rStrFilename) const
{
    const CQDString strExtension = GetExtension(rStrFilename);
    return strExtension == ".dae" || strExtension == ".anim";
}

void CSGLoaderCollada::Clear()
{
    m_mapControllers.clear();
    m_spJointNames.reset();
    m_mapGeometrySets.clear();
    m_mapVisualScenes.clear();
    m_spMaterials.reset();
    m_spSliceData.reset();
    m_bAnimationsLoaded.reset();
    m_spDefaultAnimation.reset();
    m_vecAnimations.clear();
    m_nAnimationChannels = 0;
    m_spDataSources->Reset();
    m_spFile.reset();
    m_strFilename.clear();
}

bool CSGLoaderCollada::LoadFile(const CQDString& rStrFilename)
{
    Clear();
    const CQDString strExtension = GetExtension(rStrFilename);
    if (strExtension == ".anim")
    {
        QD_ASSERT(LoadAnimSliceFile(rStrFilename), false);
    }
    else if (strExtension == ".dae")
    {
        QD_ASSERT(LoadDAEFile(rStrFilename), false);
    }
    else
    {
        Log(QD_COLLADA, LOG_ERROR, "Unrecognized extension for file '%s'", rStrFilename);
        return false;
    }
    return true;
}

bool CSGLoaderCollada::LoadAnimSliceFile(const CQDString& rStrFilename)
{
    auto spSliceData = std::make_unique<CAnimationSliceData>();
    CBexnelParser objParser(CXMLEltParse_DocAnimSlice::Create(*spSliceData));
    if (!objParser.ParseFile(rStrFilename))
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to parse animation slice file \"%s\"", rStrFilename);
        return false;
    }
    CQDString strScene = spSliceData->GetDAEFilename();
    const auto GetPath = [&] {
        const boost::filesystem::path objPath(strScene);
        return objPath.is_relative() ? objParser.GetDirectory() / objPath : objPath;
    };
    boost::system::error_code objError;
    if (!boost::filesystem::is_regular_file(GetPath(), objError))
    {
        std::ranges::replace(strScene, '\\', '/'); // documents are written on Windows, too
    }
    if (!LoadDAEFile(GetPath().string()))
    {
        return false;
    }
    m_spSliceData = std::move(spSliceData);
    return true;
}

bool CSGLoaderCollada::LoadDAEFile(const CQDString& rStrFilename)
{
    Log(QD_COLLADA, LOG_INFO, "Loading collada file \"%s\"", rStrFilename);
    auto spFile = std::make_unique<CDaeFile>();
    if (!spFile->Open(rStrFilename))
    {
        if (spFile->HasXMLError())
        {
            Log(QD_COLLADA, LOG_ERROR, "Collada file \"%s\" is not well formed", rStrFilename);
        }
        else
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Failed to load \"%s\" on URI path \"%s\" passed in as \"%s\".  Got load error: %d %s",
                boost::filesystem::path(rStrFilename).filename().string(), spFile->GetURI(), rStrFilename,
                spFile->GetErrorNumber(), spFile->GetErrorText());
        }
        return false;
    }
    m_spFile = std::move(spFile);
    m_spDataSources->SetDocumentSize(m_spFile->GetSize());
    if (GetRoot() == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Loaded dae file, but failed to get assets from \"%s\"", rStrFilename);
        Clear();
        return false;
    }
    m_strFilename = rStrFilename;
    m_spMaterials = std::make_unique<CColladaMaterials>(m_spTextureLoader, m_spTexturePool, rStrFilename);
    Log(QD_COLLADA, LOG_INFO, "Finished loading collada file \"%s\"", rStrFilename);
    return true;
}

domCOLLADA* CSGLoaderCollada::GetRoot() const
{
    daeElement* pRoot = m_spFile ? m_spFile->GetDocument()->getDomRoot() : nullptr;
    return pRoot != nullptr && pRoot->typeID() == domCOLLADA::ID() ? static_cast<domCOLLADA*>(pRoot)
                                                                   : nullptr;
}

EUpAxis CSGLoaderCollada::LoadUpAxis()
{
    const domCOLLADA* pRoot = GetRoot();
    if (pRoot == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to load up axis when no file was loaded.");
        return UP_AXIS_Z;
    }
    const domAsset* pAsset = pRoot->getAsset();
    if (pAsset == nullptr)
    {
        Log(QD_COLLADA, LOG_WARNING, "<COLLADA> element had no <asset>.  Defaulting to Z axis.");
        return UP_AXIS_Z;
    }
    const domAsset::domUp_axis* pUpAxis = pAsset->getUp_axis();
    if (pUpAxis == nullptr)
    {
        Log(QD_COLLADA, LOG_WARNING, "<asset> had NUL <up_axis> in <COLLADA>.");
        return UP_AXIS_Z;
    }
    switch (pUpAxis->getValue())
    {
    case UPAXISTYPE_X_UP:
        return UP_AXIS_X;
    case UPAXISTYPE_Y_UP:
        return UP_AXIS_Y;
    case UPAXISTYPE_Z_UP:
        return UP_AXIS_Z;
    default:
        Log(QD_COLLADA, LOG_WARNING,
            "Unknown <up_axis> value %d.  Defaulting to Z axis in <asset> in <COLLADA>", pUpAxis->getValue());
        return UP_AXIS_Z;
    }
}
