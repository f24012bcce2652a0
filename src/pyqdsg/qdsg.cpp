// The module file: initialisation, the module's functions, and the choice of a loader.
#include "pyqdsg/PySGAnimation.h"
#include "pyqdsg/PySGGeomBinding.h"
#include "pyqdsg/PySGGeom_PrimList.h"
#include "pyqdsg/PySGGeom_Quads.h"
#include "pyqdsg/PySGGeom_Triangles.h"
#include "pyqdsg/PySGNode.h"
#include "pyqdsg/PySGResourceSet.h"
#include "pyqdsg/PySupport.h"
#include "pyqdsg/PyTransform3.h"
#include "qdcommon/CLogOutput_Std.h"
#include "qdcommon/CLogger.h"
#include "qdscenegraph/nest/CSGNestReader.h"
#include "qdscenegraph/nest/CSGNestWriter.h"
#include "qdscenegraph/render/CSGRenderer.h"
#include "qdscenegraph/texture/CSGTextureLoader.h"
#include "qdscenegraph/texture/CSGTexturePool.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"
#include "qdsgloader_collada/CSGLoaderCollada.h"
#include "qdsgloader_fbx/CQDSGLoaderFBXLib.h"
#include "qdsgloader_fbx/CSGLoaderFBX.h"

#include <exception>

CLogSource PY_QDSG("PY_QDSG");

// How many blocks of the scene-graph pool are in use: nodes, attachments, geometry and all else that a scene
// consists of. Tests call it through ctypes to see that nothing stays behind when the last Python object of a
// scene is gone.
extern "C" [[gnu::visibility("default")]] long long qdsg_count_live_objects()
{
    return CSGMem::GetPool().GetNumLiveBlocks();
}

namespace
{

// An argument is null until it was given.
using CArgument = std::optional<CQDString>;

// The arguments of load and load_resource_set.
struct CLoadArguments
{
    CArgument m_strFilename;
    unsigned char m_uiFlag1 = 0;
    unsigned char m_uiFlag2 = 0;
    CArgument m_strPoolName;
    CArgument m_strPoolPath;

    // False with an exception on failure.
    bool Parse(PyObject* pyArgs)
    {
        if (!PyArg_ParseTuple(pyArgs, "O&|bbO&O&", PyArg_ConvertFilename, &m_strFilename, &m_uiFlag1,
                              &m_uiFlag2, PyArg_ConvertText, &m_strPoolName, PyArg_ConvertFilename,
                              &m_strPoolPath))
        {
            PyRaise(PyExc_ValueError, "Failed to parse arguments.");
            return false;
        }
        if (!m_strFilename)
        {
            PyRaise(PyExc_ValueError, "Got NULL filename.");
            return false;
        }
        return true;
    }

    // Says which texture pool is used, on behalf of the calling function.
    void LogTexturePool(CLogText<CQDString> objNameText, CLogText<CQDString> objPathText) const
    {
        if (m_strPoolName)
        {
            Log(PY_QDSG, LOG_INFO, objNameText, *m_strPoolName);
        }
        if (m_strPoolPath)
        {
            Log(PY_QDSG, LOG_INFO, objPathText, *m_strPoolPath);
        }
    }
};

// The loader for a file; null on failure, with an exception but for a texture pool that cannot be had.
boost::intrusive_ptr<CSGLoader> GetLoaderForFile(const CQDString& rFilename, bool bFlag1, bool bFlag2,
                                                 const CQDString& rPoolName, const CQDString& rPoolPath)
{
    const boost::intrusive_ptr<CSGTextureLoader> spTextureLoader = CSGTextureLoader::CreateStandardLoader();
    QD_CHECK_CREATED(spTextureLoader, PyRaise(PyExc_ValueError, "Failed to create a texture loader."));
    boost::intrusive_ptr<CSGTexturePool> pTexPool;
    if (!rPoolPath.empty())
    {
        pTexPool = CSGTexturePool::GetPool(rPoolName);
        QD_CHECK_NOT_NULL(pTexPool, nullptr);
        pTexPool->AddTexturePath(rPoolPath);
    }
    const boost::intrusive_ptr<CSGLoaderCollada> spLoaderCollada = CSGLoaderCollada::Create(spTextureLoader);
    QD_CHECK_CREATED(spLoaderCollada, PyRaise(PyExc_ValueError, "Failed to create collada loader."));
    spLoaderCollada->SetTexturePool(pTexPool);
    const boost::intrusive_ptr<CSGLoaderFBX> spLoaderFBX =
        CSGLoaderFBX::Create(spTextureLoader, bFlag1, bFlag2);
    QD_CHECK_OR_RETURN(spLoaderCollada && spLoaderFBX, "Creation of %s failed", "spLoaderCollada",
                       PyRaise(PyExc_ValueError, "Failed to create fbx loader."));
    spLoaderFBX->SetTexturePool(pTexPool);
    if (spLoaderFBX->CanLoadFile(rFilename))
    {
        Log(PY_QDSG, LOG_INFO, "Choosing FBX loader.");
        return spLoaderFBX;
    }
    Log(PY_QDSG, LOG_INFO, "Choosing collada loader.");
    return spLoaderCollada;
}

boost::intrusive_ptr<CSGLoader> GetLoaderForFile(const CLoadArguments& rArguments)
{
    return GetLoaderForFile(*rArguments.m_strFilename, rArguments.m_uiFlag1 != 0, rArguments.m_uiFlag2 != 0,
                            rArguments.m_strPoolName.value_or(""), rArguments.m_strPoolPath.value_or(""));
}

PyObject* qdsg_load(PyObject*, PyObject* pyArgs)
{
    CLoadArguments objArguments;
    if (!objArguments.Parse(pyArgs))
    {
        return nullptr;
    }
    objArguments.LogTexturePool("Using texture pool name '%s'", "Using texture pool path '%s'");
    const CQDString& strFilename = *objArguments.m_strFilename;
    const boost::intrusive_ptr<CSGLoader> spLoader = GetLoaderForFile(objArguments);
    if (!spLoader)
    {
        return nullptr;
    }
    if (!spLoader->LoadFile(strFilename))
    {
        return PyRaise(PyExc_ValueError, "Failed to load file %s.", strFilename);
    }
    const CSGNode::CNodePtr spSceneGraph = spLoader->LoadSceneGraph();
    if (!spSceneGraph)
    {
        return PyRaise(PyExc_ValueError, "Failed to load scene graph from %s.", strFilename);
    }
    PyObject* pyNode = PySGNode_get_from_SGNode(spSceneGraph.get());
    if (pyNode == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Failed to wrap scene graph from %s.", strFilename);
    }
    return pyNode;
}

// What fails on the way to the scene graph is only logged; the interpreter then raises SystemError by itself.
PyObject* qdsg_load_nest(PyObject*, PyObject* pyArgs)
{
    CArgument objFilename;
    if (!PyArg_ParseTuple(pyArgs, "O&", PyArg_ConvertFilename, &objFilename))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    if (!objFilename)
    {
        return PyRaise(PyExc_ValueError, "Got NULL filename.");
    }
    const CQDString& strFilename = *objFilename;
    const boost::intrusive_ptr<CSGNestReader> spReader = CSGNestReader::Create();
    QD_CHECK_CREATED(spReader, nullptr);
    QD_CHECK_CALL(spReader->LoadFile(strFilename), nullptr);
    const boost::intrusive_ptr<CSGResourceSet> spResourceSet = spReader->m_spResourceSet;
    QD_CHECK_NOT_NULL(spResourceSet, nullptr);
    const CSGNode::CNodePtr spSceneRoot = spResourceSet->GetSceneGraph();
    QD_CHECK_NOT_NULL(spSceneRoot, nullptr);
    PyObject* pyNode = PySGNode_get_from_SGNode(spSceneRoot.get());
    if (pyNode == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Failed to wrap scene graph from %s.", strFilename);
    }
    return pyNode;
}

PyObject* qdsg_load_resource_set(PyObject*, PyObject* pyArgs)
{
    CLoadArguments objArguments;
    if (!objArguments.Parse(pyArgs))
    {
        return nullptr;
    }
    objArguments.LogTexturePool("Using texture pool name '%s'", "Using texture pool path '%s'");
    const CQDString& strFilename = *objArguments.m_strFilename;
    const boost::intrusive_ptr<CSGLoader> spLoader = GetLoaderForFile(objArguments);
    if (!spLoader)
    {
        return PyRaise(PyExc_ValueError, "Failed to create a loader.");
    }
    if (!spLoader->LoadFile(strFilename))
    {
        return PyRaise(PyExc_ValueError, "Failed to load file %s.", strFilename);
    }
    const CSGNode::CNodePtr spSceneGraph = spLoader->LoadSceneGraph();
    if (!spSceneGraph)
    {
        return PyRaise(PyExc_ValueError, "LoadSceneGraph returned NULL.");
    }
    const boost::intrusive_ptr<CSGAnimation> spDefaultAnimation = spLoader->LoadDefaultAnimation();
    std::vector<CSGAnimation*> vecAnimations;
    if (!spLoader->LoadAnimations(vecAnimations))
    {
        return PyRaise(PyExc_ValueError, "Failed to load animations.");
    }
    const boost::intrusive_ptr<CSGResourceSet> spResourceSet = CSGResourceSet::Create();
    if (!spResourceSet)
    {
        return PyRaise(PyExc_ValueError, "Failed to create resource set.");
    }
    QD_CHECK_CALL(spResourceSet->AddTopLevelNode(spSceneGraph.get()),
                  PyRaise(PyExc_ValueError, "AddTopLevelNode Failed."));
    for (CSGAnimation* pAnim : vecAnimations)
    {
        QD_CHECK_NOT_NULL(pAnim, PyRaise(PyExc_ValueError, "Failed to add animations."));
        QD_CHECK_CALL(spResourceSet->AddTopLevelNode(pAnim),
                      PyRaise(PyExc_ValueError, "AddTopLevelNode Failed."));
    }
    if (CSGAnimation* pAnim = spDefaultAnimation.get())
    {
        if (pAnim->GetName().GetView() != "default")
        {
            Log(PY_QDSG, LOG_WARNING, "Default animation name: \"%s\"", pAnim->GetName());
        }
        QD_CHECK_CALL(spResourceSet->AddTopLevelNode(pAnim),
                      PyRaise(PyExc_ValueError, "AddTopLevelNode Failed."));
    }
    PyObject* pyResourceSet = PySGResourceSet_create(spResourceSet);
    if (pyResourceSet == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Failed to wrap resource set from %s.", strFilename);
    }
    return pyResourceSet;
}

PyObject* qdsg_save_resource_set(PyObject*, PyObject* pyArgs)
{
    CArgument objFilename;
    PySGResourceSet* pyResourceSet = nullptr;
    if (!PyArg_ParseTuple(pyArgs, "O&O!:save_resource_set", PyArg_ConvertFilename, &objFilename,
                          &PySGResourceSet_Type, &pyResourceSet))
    {
        // The parser's own exception says more.
        Log(PY_QDSG, LOG_ERROR, "Failed to parse arguments.");
        return nullptr;
    }
    if (!objFilename)
    {
        return PyRaise(PyExc_ValueError, "Got NULL filename.");
    }
    if (!pyResourceSet->m_spResourceSet)
    {
        return PyRaise(PyExc_ValueError, "Got NULL resource set.");
    }
    const CQDString& strFilename = *objFilename;
    const boost::intrusive_ptr<CSGNestWriter> spWriter = CSGNestWriter::Create();
    QD_CHECK_NOT_NULL(spWriter, PyRaise(PyExc_ValueError, "Failed to create CSGNestWriter."));
    QD_CHECK_OR_RETURN(spWriter->SaveResourceSet(strFilename, pyResourceSet->m_spResourceSet.get()),
                       "Call %s failed",
                       "spWriter->SaveResourceSet(strFilename,pyResourceSet->m_spResourceSet.get())",
                       PyRaise(PyExc_ValueError, "Failed to write %s.", strFilename));
    Py_RETURN_NONE;
}

PyObject* qdsg_create_resource_set_from_node(PyObject*, PyObject* pyArgs)
{
    PySGNode* pyNode = nullptr;
    if (!PyArg_ParseTuple(pyArgs, "O!:SGNode", &PySGNode_Type, &pyNode))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    if (pyNode == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Got NULL Python SG Node.");
    }
    CSGNode* pSGNode = pyNode->m_spNode.get();
    if (pSGNode == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Python SG Node had NULL SG Node.");
    }
    const boost::intrusive_ptr<CSGResourceSet> spResourceSet = CSGResourceSet::Create();
    if (!spResourceSet)
    {
        return PyRaise(PyExc_ValueError, "Failed to create resource set.");
    }
    QD_CHECK_CALL(spResourceSet->AddTopLevelNode(pSGNode),
                  PyRaise(PyExc_ValueError, "AddTopLevelNode Failed."));
    PyObject* pyResourceSet = PySGResourceSet_create(spResourceSet);
    if (pyResourceSet == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Failed to turn resource set into a python type");
    }
    return pyResourceSet;
}

PyObject* qdsg_set_log_level(PyObject*, PyObject* pyArgs)
{
    int nLevel = 0;
    if (!PyArg_ParseTuple(pyArgs, "i:set_log_level", &nLevel))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    const int nPrevious = PY_QDSG.GetThreshold();
    CLogSource::SetAllThresholds(nLevel);
    return PyIndex_FromLong(nPrevious);
}

// The function with what only the standard library throws turned into a Python exception: memory for a string
// or a vector.
template <PyCFunction FUNCTION>
PyObject* Guarded(PyObject* pySelf, PyObject* pyArgs) noexcept
{
    try
    {
        return FUNCTION(pySelf, pyArgs);
    }
    catch (const std::bad_alloc&)
    {
        return PyErr_NoMemory();
    }
    catch (const std::exception& rException)
    {
        return PyLogAndRaise(PyExc_ValueError, "%s", rException.what());
    }
}

PyMethodDef s_arrFunctions[] = {
    {"load", Guarded<qdsg_load>, METH_VARARGS, "Load a scene graph from a file."},
    {"load_nest", Guarded<qdsg_load_nest>, METH_VARARGS, "Load a nest file and get the root node."},
    {"load_resource_set", Guarded<qdsg_load_resource_set>, METH_VARARGS,
     "sg_resource_set = load_resource_set(dae_filename)"},
    {"save_resource_set", Guarded<qdsg_save_resource_set>, METH_VARARGS,
     "save_resource_set(binary_filename,sg_resource_set)"},
    {"create_resource_set_from_node", Guarded<qdsg_create_resource_set_from_node>, METH_VARARGS,
     "create_resource_set_from_node(sgnode)"},
    {"set_log_level", Guarded<qdsg_set_log_level>, METH_VARARGS,
     "Set the level up to which messages are logged; returns the previous one."},
    {}};

// A type with what is said when it cannot be made ready, and its name in the module (null: it has none).
struct CModuleType
{
    PyTypeObject* m_pType;
    CLogText<> m_objFailure;
    const char* m_szAttribute;
};

} // namespace

PyObject* initqdsg(PyModuleCreator fnCreateModule)
{
    CLogger::CreateInstance();
    CLogOutput_Std::InstallStdOut();
    CSGRenderer::SetBehavior(CSGRenderer::BEHAVIOR_NO_GRAPHICS);
    QD_CHECK_CALL(CQDSGLoaderColladaLib::InitLibrary(), nullptr);
    QD_CHECK_CALL(CQDSGLoaderFBXLib::InitLibrary(), nullptr);
    const CModuleType arrTypes[] = {
        {&PySGNode_Type, "Failed to make PySGNode type ready.", "Node"},
        {&PySGGeomBinding_Type, "Failed to make PySGGeomBinding type ready.", "GeomBinding"},
        {&PySGGeom_Triangles_Type, "Failed to make PySGGeom_Triangles type ready.", "GeomTriangles"},
        {&PySGGeom_TrianglesIter_Type, "Failed to make PySGGeom_TrianglesIter type ready.", nullptr},
        {&PySGGeom_Quads_Type, "Failed to make PySGGeom_Quads type ready.", "GeomQuads"},
        {&PySGGeom_QuadsIter_Type, "Failed to make PySGGeom_QuadsIter type ready.", nullptr},
        {&PySGGeom_PrimList_Type, "Failed to make PySGGeom_PrimList type ready.", "GeomPrimList"},
        {&PySGGeom_PrimListIter_Type, "Failed to make PySGGeom_PrimListIter type ready.", nullptr},
        {&PyTransform3_Type, "Failed to make PyTransform3 type ready.", "Transform3"},
        {&PySGResourceSet_Type, "Failed to make PySGResourceSet type ready.", "ResourceSet"},
        {&PySGAnimation_Type, "Failed to make PySGAnimation type ready.", "Animation"}};
    for (const CModuleType& rType : arrTypes)
    {
        if (PyType_Ready(rType.m_pType) != 0)
        {
            Log(PY_QDSG, LOG_ERROR, rType.m_objFailure);
            return nullptr;
        }
    }
    PyObject* pyModule = fnCreateModule("qdsg", s_arrFunctions, "Exposes the QD scene-graph code to Python.");
    if (pyModule == nullptr)
    {
        Log(PY_QDSG, LOG_ERROR, "Failed to init qdsg module.");
        return nullptr;
    }
    for (const CModuleType& rType : arrTypes)
    {
        if (rType.m_szAttribute != nullptr)
        {
            Py_INCREF(rType.m_pType);
            PyModule_AddObject(pyModule, rType.m_szAttribute, reinterpret_cast<PyObject*>(rType.m_pType));
        }
    }
    PyModule_AddStringConstant(pyModule, "__version__", QDSG_VERSION);
    return pyModule;
}
