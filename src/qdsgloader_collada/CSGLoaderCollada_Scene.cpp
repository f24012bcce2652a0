// Libraries and scenes.
#include "qdsgloader_collada/CSGLoaderCollada.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDataSourceCache.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CColladaMaterials.h"
#include "qdsgloader_collada/CColladaNodeConverter.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <exception>

namespace
{

void LogIgnored(const daeArray& rElements, const char* szElement, const domVisual_scene& rScene)
{
    if (rElements.getCount() > 0)
    {
        Log(QD_COLLADA, LOG_WARNING, "Ignoring %d <%s> elements in <visual_scene id=\"%s\">",
            CountOf(rElements), szElement, GetIDText(rScene));
    }
}

// The scene that a URI refers to; null (reported) when there is none. Autodesk's exporter writes scenes
// without id and refers to them by "#".
domVisual_scene* FindVisualScene(const domCOLLADA& rRoot, const daeURI& rURI)
{
    if (rURI.originalStr() == "#")
    {
        for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_visual_scenes_array()))
        {
            for (const auto& rspScene : AsSpan(rspLibrary->getVisual_scene_array()))
            {
                if (*GetIDText(*rspScene) == '\0')
                {
                    return rspScene;
                }
            }
        }
    }
    return CSGLoaderCollada::GetURIElement<domVisual_scene>(rURI);
}

} // namespace

boost::intrusive_ptr<CSGNode> CSGLoaderCollada::LoadSceneGraph()
{
    domCOLLADA* pRoot = GetRoot();
    if (pRoot == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to load scene graph when no file was loaded.");
        return nullptr;
    }
    Log(QD_COLLADA, LOG_INFO, "Loading a <COLLADA> element.");
    boost::intrusive_ptr<CSGNode> spNode;
    try
    {
        spNode = LoadScene(*pRoot);
    }
    catch (const std::exception& rException)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to load the scene graph of \"%s\": %s", m_strFilename,
            rException.what());
    }
    m_mapVisualScenes.clear();
    if (spNode)
    {
        Log(QD_COLLADA, LOG_INFO, "Finished loading a <COLLADA> element.");
    }
    return spNode;
}

boost::intrusive_ptr<CSGNode> CSGLoaderCollada::LoadScene(domCOLLADA& rRoot)
{
    CColladaNodeConverter objConverter(*this);
    if (!LoadAllLibraries(rRoot, objConverter))
    {
        return nullptr;
    }
    objConverter.LogIgnored();
    const domCOLLADA::domScene* pScene = rRoot.getScene();
    if (pScene == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "Had no <scene> in <COLLADA>");
        return nullptr;
    }
    const domInstanceWithExtra* pInstance = pScene->getInstance_visual_scene();
    if (pInstance == nullptr)
    {
        Log(QD_COLLADA, LOG_ERROR, "<scene> had no <instance_visual_scene>");
        return nullptr;
    }
    domVisual_scene* pVisualScene = FindVisualScene(rRoot, pInstance->getUrl());
    const boost::intrusive_ptr<CSGNode> spNode =
        pVisualScene != nullptr ? LoadVisualScene(*pVisualScene, objConverter) : nullptr;
    if (!spNode)
    {
        Log(QD_COLLADA, LOG_ERROR, "Failed to node for <instance_visual_scene> in default <scene>");
        return nullptr;
    }
    objConverter.BindSkins(*spNode);
    return spNode;
}

bool CSGLoaderCollada::LoadAllLibraries(domCOLLADA& rRoot, CColladaNodeConverter& rConverter)
{
    const auto Report = [](bool bLoaded, const char* szLibrary) {
        if (!bLoaded)
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to load all <%s> elements in <COLLADA>.", szLibrary);
        }
        return bLoaded;
    };
    if (!Report(rConverter.LoadLibraryCameras(rRoot), "library_cameras") ||
        !Report(rConverter.LoadLibraryLights(rRoot), "library_lights"))
    {
        return false;
    }
    const bool bGeometriesLoaded = LoadLibraryGeometries(rRoot);
    m_spDataSources->Clear();
    if (!Report(bGeometriesLoaded, "library_geometries"))
    {
        return false;
    }
    // Images are loaded for the surfaces that show them: what nothing shows costs nothing.
    m_spMaterials->LoadLibraryMaterials(rRoot);
    m_spMaterials->LoadLibraryEffects(rRoot);
    return Report(LoadLibraryNodes(rRoot, rConverter), "library_nodes") &&
           Report(LoadLibraryVisualScenes(rRoot, rConverter), "library_visual_scenes");
}

bool CSGLoaderCollada::LoadLibraryNodes(domCOLLADA& rRoot, CColladaNodeConverter& rConverter)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_nodes_array()))
    {
        for (const auto& rspNode : AsSpan(rspLibrary->getNode_array()))
        {
            if (!rConverter.ConvertNode(*rspNode))
            {
                Log(QD_COLLADA, LOG_ERROR, "Failed to load <node id=\"%s\"> in <library_nodes>.",
                    GetIDText(*rspNode));
                return false;
            }
        }
    }
    return true;
}

bool CSGLoaderCollada::LoadLibraryVisualScenes(domCOLLADA& rRoot, CColladaNodeConverter& rConverter)
{
    for (const auto& rspLibrary : AsSpan(rRoot.getLibrary_visual_scenes_array()))
    {
        for (const auto& rspScene : AsSpan(rspLibrary->getVisual_scene_array()))
        {
            if (!LoadVisualScene(*rspScene, rConverter))
            {
                Log(QD_COLLADA, LOG_ERROR,
                    "Failed to load <visual_scene id=\"%s\"> in <library_visual_scenes>.",
                    GetIDText(*rspScene));
                return false;
            }
        }
    }
    return true;
}

boost::intrusive_ptr<CSGNode> CSGLoaderCollada::LoadVisualScene(domVisual_scene& rScene,
                                                                CColladaNodeConverter& rConverter)
{
    boost::intrusive_ptr<CSGNode>& rspNode = m_mapVisualScenes[&rScene];
    if (rspNode)
    {
        return rspNode;
    }
    const char* szID = GetIDText(rScene);
    const char* szName = Text(rScene.getName());
    const boost::intrusive_ptr<CSGNode> spNode =
        CSGNode::Create(*szID != '\0' ? szID : szName, *szName != '\0' ? szName : szID);
    for (const auto& rspElement : AsSpan(rScene.getNode_array()))
    {
        const boost::intrusive_ptr<CSGNode> spChild = rConverter.ConvertNode(*rspElement);
        if (!spNode || !spChild || !spNode->AddChild(spChild.get()))
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to add <node id=\"%s\"> as child of <visual_scene id=\"%s\">",
                GetIDText(*rspElement), szID);
            return nullptr;
        }
    }
    LogIgnored(rScene.getEvaluate_scene_array(), "evaluate_scene", rScene);
    LogIgnored(rScene.getExtra_array(), "extra", rScene);
    rspNode = spNode;
    return spNode;
}
