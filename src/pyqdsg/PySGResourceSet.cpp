#include "pyqdsg/PySGResourceSet.h"

#include "pyqdsg/PySGAnimation.h"
#include "pyqdsg/PySGNode.h"
#include "pyqdsg/PySupport.h"
#include "qdscenegraph/node/CSGCopyData.h"

#include <ranges>

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

// A string of a list. False with an exception for anything else.
bool GetString(PyObject* pyList, Py_ssize_t nItem, CQDString& rText)
{
    PyObject* pyItem = PyList_GetItem(pyList, nItem);
    if (pyItem == nullptr || !PyText_Check(pyItem))
    {
        PyErr_Clear();
        PyRaise(PyExc_ValueError, "Expected a string.");
        return false;
    }
    return PyText_AsString(pyItem, rText);
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

// Adds a copy of each named node to a set with a skeleton, bound to that skeleton. False with an exception on
// failure.
bool AddGeometries(const CSGResourceSet& rFrom, PyObject* pyNames, CSGCopyData* pSkeletonCopy,
                   CSGResourceSet* spNewResourceSet)
{
    for (Py_ssize_t n = 0; n < PyList_GET_SIZE(pyNames); ++n)
    {
        CQDString strName;
        if (!GetString(pyNames, n, strName))
        {
            return false;
        }
        Log(PY_QDSG, LOG_INFO, "~~~~~~~~~~~~~~~~testing 2 %s", strName);
        const CSGNode::CNodePtr spAddGeom = rFrom.GetNodeInSkinBinding(strName, pSkeletonCopy);
        if (!spAddGeom)
        {
            Log(PY_QDSG, LOG_ERROR, "~~~spAddGeom is null for %s", strName);
        }
        QD_CHECK_CALL(spNewResourceSet->AddTopLevelNode(spAddGeom.get()),
                      (PyRaise(PyExc_ValueError, "AddTopLevelNode Failed."), false));
    }
    return true;
}

// The set of the skeleton, the named nodes (null for none) and the animations.
PyObject* BuildSkeleton(PyObject* pySelf, PyObject* pyNames, const char* szAnimationFailure)
{
    const CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    if (pResourceSet->GetFirstNode() == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Had NULL scene graph for this resource set");
    }
    CSGCopyData objCopyData;
    const CSGNode::CNodePtr spSkeleton = pResourceSet->GetSkeletonNode(&objCopyData);
    if (!spSkeleton)
    {
        return PyRaise(PyExc_ValueError, "unable to get a skeleton from the first node in the resource set");
    }
    const boost::intrusive_ptr<CSGResourceSet> spNewResourceSet = CSGResourceSet::Create();
    if (!spNewResourceSet)
    {
        return PyRaise(PyExc_ValueError, "unable to create a new resource set");
    }
    spNewResourceSet->SetUpAxis(pResourceSet->GetUpAxis());
    if (!spNewResourceSet->AddTopLevelNode(spSkeleton.get()))
    {
        return PyRaise(PyExc_ValueError, "failed to add the skeleton to the resource set");
    }
    if (pyNames != nullptr && !AddGeometries(*pResourceSet, pyNames, &objCopyData, spNewResourceSet.get()))
    {
        return nullptr;
    }
    std::vector<CSGAnimation*> vecAnimations;
    if (!GetAnimations(*pResourceSet, vecAnimations))
    {
        return nullptr;
    }
    for (CSGAnimation* pAnimation : vecAnimations)
    {
        Log(PY_QDSG, LOG_INFO, "adding animation %s", pAnimation->GetName());
        const CSGAnimation::CAnimationPtr spAnimation = pAnimation->GetForTree(spSkeleton.get());
        if (!spNewResourceSet->AddTopLevelNode(spAnimation.get()))
        {
            return PyRaise(PyExc_ValueError, "%s", szAnimationFailure);
        }
    }
    return PySGResourceSet_create(spNewResourceSet);
}

PyObject* GetSkeleton(PyObject* pySelf, void*)
{
    // The spelling is known to scripts.
    return BuildSkeleton(pySelf, nullptr, "failed to dd the animation to the resource set");
}

PyObject* PySGResourceSet_get_skeleton_ignore_geoms(PyObject* pySelf, PyObject* pyArgs)
{
    if (GetResourceSet(pySelf) == nullptr)
    {
        return nullptr;
    }
    PyObject* pyNames = nullptr;
    if (!PyArg_ParseTuple(pyArgs, "O!:list", &PyList_Type, &pyNames))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    return BuildSkeleton(pySelf, pyNames, "failed to add the animation to the resource set");
}

PyObject* PySGResourceSet_get_franken_part(PyObject* pySelf, PyObject* pyArgs)
{
    const CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    std::optional<CQDString> strNodeName;
    if (!PyArg_ParseTuple(pyArgs, "|O&:get_franken_part", PyArg_ConvertText, &strNodeName))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    if (!strNodeName)
    {
        return PyRaise(PyExc_ValueError, "Got NULL global node name.");
    }
    const boost::intrusive_ptr<CSGResourceSet> spPart = pResourceSet->GetSkinnedSubResourceSet(*strNodeName);
    if (!spPart)
    {
        return PyRaise(PyExc_ValueError, "failed to call GetSkinnedSubResourceSet.");
    }
    return PySGResourceSet_create(spPart);
}

PyObject* PySGResourceSet_get_franken_parts(PyObject* pySelf, PyObject* pyArgs)
{
    const CSGResourceSet* pResourceSet = GetResourceSet(pySelf);
    if (pResourceSet == nullptr)
    {
        return nullptr;
    }
    PyObject* pyNames = nullptr;
    if (!PyArg_ParseTuple(pyArgs, "O!:get_franken_parts", &PyList_Type, &pyNames))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    std::vector<CQDCompactString> vecNodeNames;
    for (Py_ssize_t nItem = 0; nItem < PyList_GET_SIZE(pyNames); ++nItem)
    {
        Log(PY_QDSG, LOG_INFO, "Getting item %d", static_cast<int>(nItem));
        CQDString strNodeName;
        if (!GetString(pyNames, nItem, strNodeName))
        {
            return nullptr;
        }
        QD_CHECK(!strNodeName.empty(), PyRaise(PyExc_ValueError, "Expected a string."));
        Log(PY_QDSG, LOG_INFO, "Pushing '%s'", strNodeName);
        vecNodeNames.emplace_back(strNodeName);
    }
    Log(PY_QDSG, LOG_INFO, "Calling GetSkinnedSubResourceSets");
    std::vector<boost::intrusive_ptr<CSGResourceSet>> vecParts;
    if (!pResourceSet->GetSkinnedSubResourceSets(vecNodeNames, vecParts))
    {
        return PyRaise(PyExc_ValueError, "failed to call GetSkinnedSubResourceSets.");
    }
    return PyList_of(vecParts | std::views::transform([](const auto& spPart) { return spPart.get(); }),
                     &PySGResourceSet_create, "Failed to create a new list for resource sets.");
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
    spNewResourceSet->SetUpAxis(pResourceSet->GetUpAxis());
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
    {"get_franken_part", PySGResourceSet_get_franken_part, METH_VARARGS,
     "gets a franken part from a given name and this objects skeleton"},
    {"get_franken_parts", PySGResourceSet_get_franken_parts, METH_VARARGS,
     "gets franken parts from a list of names and this objects skeleton"},
    {"get_skeleton_ignore_geoms", PySGResourceSet_get_skeleton_ignore_geoms, METH_VARARGS,
     "gets the sgnode for the skeleton of the scene graph, ignores a list of geometries"},
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
    PyCompat_GetSet("skeleton", GetSkeleton,
                    "gets a resource set containing just the skeleton from the resource set."),
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
