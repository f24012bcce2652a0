#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"

#include <filesystem>

bool CSGLoaderFBXImpl::CanLoadFile(const CQDString& rStrFilename) const
{
    return std::filesystem::path(rStrFilename).extension() == ".fbx";
}

bool CSGLoaderFBXImpl::LoadFile(const CQDString& rStrFilename)
{
    if (!CanLoadFile(rStrFilename))
    {
        Log(QD_FBX, LOG_ERROR, "Unrecognized extension for file '%s'", rStrFilename);
        return false;
    }
    Log(QD_FBX, LOG_ERROR, "Reading FBX files is not supported yet: '%s'", rStrFilename);
    return false;
}

boost::intrusive_ptr<CSGNode> CSGLoaderFBXImpl::LoadSceneGraph()
{
    Log(QD_FBX, LOG_ERROR, "Tried to load scene graph when no file was loaded.");
    return nullptr;
}

EUpAxis CSGLoaderFBXImpl::LoadUpAxis()
{
    Log(QD_FBX, LOG_ERROR, "Defaulting to Up axis Z");
    return UP_AXIS_Z;
}

bool CSGLoaderFBXImpl::LoadAnimations(std::vector<CSGAnimation*>&)
{
    // Spelt as in the COLLADA loader, where logs have always had it so.
    Log(QD_FBX, LOG_ERROR, "Tried to load animatinos when no file was loaded.");
    return false;
}

boost::intrusive_ptr<CSGAnimation> CSGLoaderFBXImpl::LoadDefaultAnimation()
{
    Log(QD_FBX, LOG_ERROR, "Tried to load animation when no file was loaded.");
    return nullptr;
}
