// An FBX file made from text, loaded, with what was logged about it.
#pragma once

#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"
#include "qdsgloader_fbx/CSGLoaderFBX.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <string>
#include <vector>

struct CFBXTestScene
{
    // The content of the file's "Objects" and "Connections".
    CFBXTestScene(const std::string& rObjects, const std::string& rConnections)
        : m_objFile("scene.fbx", "; FBX 7.4.0 project file\nFBXHeaderExtension:  {\n\tFBXVersion: 7400\n}\n"
                                 "Objects:  {\n" +
                                     rObjects + "}\nConnections:  {\n" + rConnections + "}\n")
    {
        CQDSGLoaderFBXLib::InitLibrary();
        m_spLoader = CSGLoaderFBX::Create(CSGTextureLoader::CreateStandardLoader(), false, false);
        if (m_spLoader->LoadFile(m_objFile.GetName()))
        {
            m_objLog.Clear();
            m_spRoot = m_spLoader->LoadSceneGraph();
        }
    }

    // The lines at levels 1 and 4 that are not of every file: what went wrong or was left out.
    std::vector<std::string> GetComplaints() const
    {
        std::vector<std::string> vecLines;
        for (const std::string& rLine : m_objLog.GetLines())
        {
            if ((rLine.starts_with("1 ") || rLine.starts_with("4 ")) && !rLine.ends_with("from fbx scene."))
            {
                vecLines.push_back(rLine);
            }
        }
        return vecLines;
    }
    CSGNode* Find(const char* szGlobalName) const
    {
        return m_spRoot ? m_spRoot->FindNodeByGlobalName(szGlobalName) : nullptr;
    }

    CLogCapture m_objLog;
    CTempFile m_objFile;
    boost::intrusive_ptr<CSGLoaderFBX> m_spLoader;
    boost::intrusive_ptr<CSGNode> m_spRoot;
};
