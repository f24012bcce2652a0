// The scene graph that the loader makes of an FBX file, with what was logged about it.
#pragma once

#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"
#include "qdsgloader_fbx/CSGLoaderFBXImpl.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"
#include "support/FBXTestText.h"

struct CFBXTestGraph
{
    enum EFlags
    {
        KEEP_QUATERNIONS = 1,
        RESAMPLE = 2
    };

    explicit CFBXTestGraph(const std::string& rFilename, int nFlags = 0,
                           const boost::intrusive_ptr<CSGTexturePool>& spTexturePool = nullptr)
    {
        CQDSGLoaderFBXLib::InitLibrary();
        m_spLoader = new CSGLoaderFBXImpl(CSGTextureLoader::CreateStandardLoader(),
                                          (nFlags & KEEP_QUATERNIONS) != 0, (nFlags & RESAMPLE) != 0);
        m_spLoader->SetTexturePool(spTexturePool);
        m_spRoot = m_spLoader->LoadFile(rFilename) ? m_spLoader->LoadSceneGraph() : nullptr;
    }
    CFBXTestGraph(const std::string& rObjects, const std::string& rConnections)
        : CFBXTestGraph(CTempFile("scene.fbx", MakeFBXFile(rObjects, rConnections)).GetName())
    {}

    // The lines at levels 1 and 4: what went wrong or was left out.
    std::vector<std::string> GetComplaints() const
    {
        std::vector<std::string> vecLines = m_objLog.GetLines();
        std::erase_if(vecLines,
                      [](const std::string& r) { return !r.starts_with("1 ") && !r.starts_with("4 "); });
        return vecLines;
    }
    CSGNode* Find(const std::string& rGlobalName) const
    {
        return m_spRoot ? m_spRoot->FindNodeByGlobalName(rGlobalName.c_str()) : nullptr;
    }
    CTransform3 GetWorld(const std::string& rGlobalName) const
    {
        return CSGData_WorldTransform::GetOrCreateFromNode(Find(rGlobalName))->GetTransform();
    }

    CLogCapture m_objLog;
    boost::intrusive_ptr<CSGLoaderFBXImpl> m_spLoader;
    boost::intrusive_ptr<CSGNode> m_spRoot;
};
