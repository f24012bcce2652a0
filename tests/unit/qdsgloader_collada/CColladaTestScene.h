// A COLLADA document made from text, loaded, with what was logged about it.
#pragma once

#include "daedom/CDaeTestDocument.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdscenegraph/node/CSGNode.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"
#include "support/CLogCapture.h"
#include "support/CTempFile.h"

#include <string>
#include <vector>

struct CColladaTestScene
{
    explicit CColladaTestScene(const std::string& rContent)
        : m_objFile("scene.dae", DaeTestDocument(rContent))
    {
        CQDSGLoaderColladaLib::InitLibrary();
        m_spLoader = CSGLoaderCollada::Create(CSGTextureLoader::CreateStandardLoader());
        if (m_spLoader->LoadFile(m_objFile.GetName()))
        {
            m_objLog.Clear();
            m_spRoot = m_spLoader->LoadSceneGraph();
        }
    }

    // The lines at levels 1 and 4: what went wrong or was left out.
    std::vector<std::string> GetComplaints() const
    {
        std::vector<std::string> vecLines;
        for (const std::string& rLine : m_objLog.GetLines())
        {
            if (rLine.starts_with("1 ") || rLine.starts_with("4 "))
            {
                vecLines.push_back(rLine);
            }
        }
        return vecLines;
    }
    CSGNode* Find(const char* szGlobalName) const { return m_spRoot->FindNodeByGlobalName(szGlobalName); }

    CLogCapture m_objLog;
    CTempFile m_objFile;
    boost::intrusive_ptr<CSGLoaderCollada> m_spLoader;
    boost::intrusive_ptr<CSGNode> m_spRoot;
};

// A scene "scene" of the nodes, behind the libraries.
inline std::string TestScene(const std::string& rNodes, const std::string& rLibraries = "")
{
    return rLibraries + "<library_visual_scenes><visual_scene id=\"scene\">" + rNodes +
           "</visual_scene></library_visual_scenes><scene><instance_visual_scene url=\"#scene\"/></scene>";
}

inline std::string TestSource(const std::string& rID, const std::string& rValues,
                              const std::string& rAccessor, const std::string& rParams)
{
    return "<source id=\"" + rID + "\"><float_array id=\"" + rID + "-array\">" + rValues +
           "</float_array><technique_common><accessor source=\"#" + rID + "-array\" " + rAccessor + ">" +
           rParams + "</accessor></technique_common></source>";
}

constexpr const char* TEST_XYZ =
    "<param name=\"X\" type=\"float\"/><param name=\"Y\" type=\"float\"/><param name=\"Z\" type=\"float\"/>";
constexpr const char* TEST_ST = "<param name=\"S\" type=\"float\"/><param name=\"T\" type=\"float\"/>";

// A geometry "g": its mesh has 8 positions, the corners of a unit cube in binary order, 6 normals, 1 texture
// coordinate, <vertices id="v">, and the primitives.
inline std::string TestMesh(const std::string& rPrimitives)
{
    return "<library_geometries><geometry id=\"g\" name=\"geo\"><mesh>" +
           TestSource("pos", "0 0 0 0 0 1 0 1 0 0 1 1 1 0 0 1 0 1 1 1 0 1 1 1", "count=\"8\" stride=\"3\"",
                      TEST_XYZ) +
           TestSource("nor", "1 0 0 -1 0 0 0 1 0 0 -1 0 0 0 1 0 0 -1", "count=\"6\" stride=\"3\"", TEST_XYZ) +
           TestSource("tex", "0.25 0.75", "count=\"1\" stride=\"2\"", TEST_ST) +
           "<vertices id=\"v\"><input semantic=\"POSITION\" source=\"#pos\"/></vertices>" + rPrimitives +
           "</mesh></geometry></library_geometries>";
}

inline std::string TestMeshScene(const std::string& rPrimitives)
{
    return TestScene("<node id=\"n\"><instance_geometry url=\"#g\"/></node>", TestMesh(rPrimitives));
}

constexpr const char* TEST_VERTEX = "<input semantic=\"VERTEX\" source=\"#v\" offset=\"0\"/>";
constexpr const char* TEST_NORMAL = "<input semantic=\"NORMAL\" source=\"#nor\" offset=\"1\"/>";
