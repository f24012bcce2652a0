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

// False with an exception on failure.
bool GetAnimations(const CSGResourceSet& rResourceSet, std::vector<CSGAnimation*>& rvecAnimations)
{
    if (!rResourceSet.GetAnimations(rvecAnimations))
    {
        PyRaise(PyExc_ValueError, "failed to get the animations from the resource set");
        return false;
    }
    return true;
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
    if (!GetAnimations(*pResourceSet, vecAnimations))
    {
        return nullptr;
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

PyObject* PySGResourceSet_create_animations_subset(PyObject* pySelf, PyObject*)
{
    const CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    std::vector<CSGAnimation*> vecAnimations;
    if (!GetAnimations(*pResourceSet, vecAnimations))
    {
        return nullptr;
    }
    const boost::intrusive_ptr<CSGResourceSet> spNewResourceSet = CSGResourceSet::Create();
    if (!spNewResourceSet)
    {
        return PyRaise(PyExc_ValueError, "unable to create a new resource set");
    }
    for (CSGAnimation* pAnimation : vecAnimations)
    {
        Log(PY_QDSG, LOG_INFO, "adding animation %s", pAnimation->GetName());
        if (!spNewResourceSet->AddTopLevelNode(pAnimation))
        {
            return PyRaise(PyExc_ValueError, "failed to add the animation to the resource set");
        }
    }
    return PySGResourceSet_create(spNewResourceSet);
}

PyObject* PySGResourceSet_add_animation(PyObject* pySelf, PyObject* pyArgs)
{
    CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    PySGAnimation* pyAnimation = nullptr;
    if (!PyArg_ParseTuple(pyArgs, "O!:SGAnimation", &PySGAnimation_Type, &pyAnimation))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    if (pyAnimation == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Got NULL Python SG Animation.");
    }
    CSGAnimation* pAnimation = pyAnimation->m_spAnimation.get();
    if (pAnimation == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Had NULL animation.");
    }
    if (pResourceSet->HasAnimation(pAnimation->GetName()))
    {
        Log(PY_QDSG, LOG_ERROR,
            "Tried to add animation '%s' but there was already an animation with that name.",
            pAnimation->GetName());
        return PyRaise(PyExc_ValueError, "Duplicate animation name '%s'", pAnimation->GetName());
    }
    if (!pResourceSet->AddTopLevelNode(pAnimation))
    {
        return PyRaise(PyExc_ValueError, "Failed to add animation.");
    }
    Py_RETURN_NONE;
}

PyObject* PySGResourceSet_rename_animation(PyObject* pySelf, PyObject* pyArgs)
{
    CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    std::optional<CQDString> strOldName;
    std::optional<CQDString> strNewName;
    if (!PyArg_ParseTuple(pyArgs, "|O&O&:rename_animation", PyArg_ConvertText, &strOldName, PyArg_ConvertText,
                          &strNewName))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    if (!strOldName || !strNewName)
    {
        return PyRaise(PyExc_ValueError, "Expecting oldName, newName");
    }
    if (!pResourceSet->RenameAnimation(*strOldName, *strNewName))
    {
        return PyRaise(PyExc_ValueError, "Failed to rename animation.");
    }
    Py_RETURN_NONE;
}

PyObject* PySGResourceSet_clear_animations(PyObject* pySelf, PyObject*)
{
    CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    pResourceSet->ClearAnimations();
    Py_RETURN_NONE;
}

PyMethodDef s_arrMethods[] = {
    {"rename_node", PySGResourceSet_rename_node, METH_VARARGS,
     "Rename any node in the resource set with a particular name."},
    {"create_animations_subset", PySGResourceSet_create_animations_subset, METH_NOARGS,
     "creates and returns a new resource set containing just the animations."},
    {"add_animation", PySGResourceSet_add_animation, METH_VARARGS, "adds an animation to a resource set."},
    {"rename_animation", PySGResourceSet_rename_animation, METH_VARARGS, "renames an animation."},
    {"clear_animations", PySGResourceSet_clear_animations, METH_NOARGS,
     "Remove all animations in this resource set."},
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
