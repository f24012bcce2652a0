#include "pyqdsg/PySGResourceSet.h"

#include "pyqdsg/PySGAnimation.h"
#include "pyqdsg/PySGNode.h"
#include "pyqdsg/PySupport.h"

namespace
{

CSGResourceSet* GetResourceSet(PyObject* pySelf)
{
    return PyWrapper_get(pySelf, &PySGResourceSet::m_spResourceSet, "Had NULL resource set");
}

PyObject* PySGResourceSet_repr(PyObject*) { return PyText_FromString("<qdsg.SGResourceSet>"); }

PyObject* GetSceneGraph(PyObject* pySelf, void*)
{
    const CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    const CSGNode::CNodePtr spSceneGraph = pResourceSet->GetSceneGraph();
    if (!spSceneGraph)
    {
        return PyRaise(PyExc_ValueError, "Had NULL scene graph");
    }
    return PySGNode_get_from_SGNode(spSceneGraph.get());
}

PyObject* GetAnimations(PyObject* pySelf, void*)
{
    const CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    std::vector<CSGAnimation*> vecAnimations;
    if (!pResourceSet->GetAnimations(vecAnimations))
    {
        return PyRaise(PyExc_ValueError, "failed to get the animations from the resource set");
    }
    return PyList_of(vecAnimations, &PySGAnimation_create, "Failed to create a new list for animations.");
}

PyObject* PySGResourceSet_rename_node(PyObject* pySelf, PyObject* pyArgs)
{
    CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    std::optional<CQDString> strOldName;
    std::optional<CQDString> strNewName;
    if (!PyArg_ParseTuple(pyArgs, "O&O&:rename_node", PyArg_ConvertText, &strOldName, PyArg_ConvertText,
                          &strNewName))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    if (!pResourceSet->RenameNode(*strOldName, *strNewName))
    {
        // Of nodes too: scripts know the text.
        return PyRaise(PyExc_ValueError, "Failed to rename animation.");
    }
    Py_RETURN_NONE;
}

PyMethodDef s_arrMethods[] = {{"rename_node", PySGResourceSet_rename_node, METH_VARARGS,
                               "Rename any node in the resource set with a particular name."},
                              {}};

PyGetSetDef s_arrGetSets[] = {
    PyCompat_GetSet("scene_graph", GetSceneGraph, "Root node of the scene graph."),
    PyCompat_GetSet("animations", GetAnimations, "returns the animations in the resource set."),
    {}};

} // namespace

PyTypeObject PySGResourceSet_Type =
    PyCompat_MakeType({.szName = "qdsg.SGResourceSet",
                       .nSize = sizeof(PySGResourceSet),
                       .fnDealloc = PyWrapper_dealloc<&PySGResourceSet::m_spResourceSet>,
                       .szDoc = "qdsg SGResourceSet objects",
                       .fnRepr = PySGResourceSet_repr,
                       .arrMethods = s_arrMethods,
                       .arrGetSets = s_arrGetSets});

PyObject* PySGResourceSet_create(const boost::intrusive_ptr<CSGResourceSet>& spResourceSet)
{
    return PyWrapper_create(PySGResourceSet_Type, &PySGResourceSet::m_spResourceSet, spResourceSet,
                            "Failed to create a new PySGResourceSet.");
}
