#include "pyqdsg/PySGNode.h"

#include "pyqdsg/CSGData_PySGNode.h"
#include "pyqdsg/PySGCamera.h"
#include "pyqdsg/PySGGeomBinding.h"
#include "pyqdsg/PySGLight.h"
#include "pyqdsg/PySGMaterial.h"
#include "pyqdsg/PySGResourceSet.h"
#include "pyqdsg/PySupport.h"
#include "pyqdsg/PyTransform3.h"
#include "qdscenegraph/camera/CSGData_Camera.h"
#include "qdscenegraph/geometry/CSGData_Geometry.h"
#include "qdscenegraph/light/CSGData_LightSet.h"
#include "qdscenegraph/material/CSGData_Material.h"
#include "qdscenegraph/optimize/CSGOptimizer.h"
#include "qdscenegraph/skin/CSGData_SkinBindingSet.h"
#include "qdscenegraph/transform/CSGData_WorldTransform.h"

#include <ranges>

namespace
{

void PySGNode_dealloc(PyObject* pySelf)
{
    if (pySelf != nullptr)
    {
        const CSGNode::CNodePtr& rspNode = PyField(pySelf, &PySGNode::m_spNode);
        CSGData_PySGNode* pData = rspNode ? rspNode->FindData<CSGData_PySGNode>() : nullptr;
        // A node whose link could not be attached has none, or that of another wrapper.
        if (pData != nullptr && pData->GetPyNode() == reinterpret_cast<PySGNode*>(pySelf))
        {
            rspNode->RemoveData(pData);
        }
    }
    PyWrapper_dealloc<&PySGNode::m_spNode>(pySelf);
}

PyObject* PySGNode_repr(PyObject* pySelf)
{
    if (pySelf == nullptr)
    {
        return PyLogAndRaise(PyExc_ValueError, "Handed in NULL pySelf.");
    }
    const CSGNode::CNodePtr& rspNode = PyField(pySelf, &PySGNode::m_spNode);
    if (!rspNode)
    {
        return PyText_FromString("<qdsg.SGNode - Empty>");
    }
    CQDString strText = "<qdsg.SGNode global='";
    strText += rspNode->GetGlobalName().GetView();
    strText += "' local='";
    strText += rspNode->GetLocalName().GetView();
    strText += "'>";
    return PyText_FromString(strText);
}

template <const CQDCompactString& (CSGNode::*GET)() const>
PyObject* GetName(PyObject* pySelf, void*)
{
    const CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL node.");
    return pNode != nullptr ? PyText_FromString((pNode->*GET)().GetView()) : nullptr;
}

template <void (CSGNode::*SET)(const CQDCompactString&)>
int SetName(PyObject* pySelf, PyObject* pyName, void*)
{
    CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL node.");
    if (pNode == nullptr)
    {
        return -1;
    }
    // Null when the attribute is deleted.
    if (pyName == nullptr || !PyText_Check(pyName))
    {
        PyRaise(PyExc_TypeError, "Expected a string.");
        return -1;
    }
    CQDString strName;
    if (!PyText_AsString(pyName, strName))
    {
        return -1;
    }
    (pNode->*SET)(strName);
    return 0;
}

PyObject* GetParent(PyObject* pySelf, void*)
{
    const CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL node.");
    if (pNode == nullptr)
    {
        return nullptr;
    }
    if (pNode->GetParent() == nullptr)
    {
        Py_RETURN_NONE;
    }
    return PySGNode_get_from_SGNode(pNode->GetParent());
}

PyObject* GetChildren(PyObject* pySelf, void*)
{
    if (pySelf == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Had NULL self.");
    }
    const CSGNode* pNode = PyField(pySelf, &PySGNode::m_spNode).get();
    if (pNode == nullptr)
    {
        Py_RETURN_NONE;
    }
    const auto rngChildren = std::views::iota(0, pNode->GetChildrenSize()) |
                             std::views::transform([pNode](int32_t n) { return pNode->GetChild(n); });
    return PyList_of(rngChildren, &PySGNode_get_from_SGNode, "Failed to create a new children list.");
}

PyObject* GetGeomBindings(PyObject* pySelf, void*)
{
    const CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL SG node.");
    if (pNode == nullptr)
    {
        return nullptr;
    }
    const auto* pData = pNode->FindData<CSGData_Geometry>();
    const CSGGeomList* pGeomList = pData != nullptr ? pData->GetGeomList() : nullptr;
    const auto rngBindings =
        std::views::iota(0, pGeomList != nullptr ? pGeomList->GetNumBindings() : 0) |
        std::views::transform([pGeomList](int32_t n) { return pGeomList->GetBinding(n); });
    const auto* pSkins = pNode->FindData<CSGData_SkinBindingSet>();
    return PyList_of(
        rngBindings,
        [pSkins](CSGGeomBinding* pBinding) {
            return PySGGeomBinding_create(pBinding,
                                          pSkins != nullptr ? pSkins->FindBinding(pBinding) : nullptr);
        },
        "Failed to create a new children list.");
}

PyObject* GetWorldTransform(PyObject* pySelf, void*)
{
    CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL SG node.");
    if (pNode == nullptr)
    {
        return nullptr;
    }
    const CSGData_WorldTransform* pWorldTransform = CSGData_WorldTransform::GetOrCreateFromNode(pNode);
    if (pWorldTransform == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Failed to get world transform data.");
    }
    return PyTransform3_create(pWorldTransform->GetTransform());
}

PyObject* GetVisible(PyObject* pySelf, void*)
{
    const CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL SG node.");
    return pNode != nullptr ? PyBool_FromLong(pNode->IsVisible()) : nullptr;
}

PyObject* GetMaterial(PyObject* pySelf, void*)
{
    const CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL SG node.");
    if (pNode == nullptr)
    {
        return nullptr;
    }
    const auto* pData = pNode->FindData<CSGData_Material>();
    if (pData == nullptr)
    {
        Py_RETURN_NONE;
    }
    return PySGMaterial_create(*pData->GetMaterial());
}

PyObject* GetLights(PyObject* pySelf, void*)
{
    const CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL SG node.");
    if (pNode == nullptr)
    {
        return nullptr;
    }
    const auto* pData = pNode->FindData<CSGData_LightSet>();
    const auto rngLights = std::views::iota(0, pData != nullptr ? pData->GetNumLights() : 0) |
                           std::views::transform([pData](int32_t n) { return pData->GetLight(n); });
    return PyList_of(rngLights, &PySGLight_create, "Failed to create a new list for lights.");
}

PyObject* GetCamera(PyObject* pySelf, void*)
{
    const CSGNode* pNode = PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL SG node.");
    if (pNode == nullptr)
    {
        return nullptr;
    }
    const auto* pData = pNode->FindData<CSGData_Camera>();
    if (pData == nullptr)
    {
        Py_RETURN_NONE;
    }
    return PySGCamera_create(*pData->GetCamera());
}

CSGNode* GetNodeForMethod(PyObject* pySelf)
{
    return PyWrapper_get(pySelf, &PySGNode::m_spNode, "Had NULL internal SG node.", PyExc_Exception);
}

PyObject* PySGNode_optimize_transforms(PyObject* pySelf, PyObject* pyArgs)
{
    CSGNode* pNode = GetNodeForMethod(pySelf);
    if (pNode == nullptr)
    {
        return nullptr;
    }
    PySGResourceSet* pyResourceSet = nullptr;
    if (!PyArg_ParseTuple(pyArgs, "O!:resource_set", &PySGResourceSet_Type, &pyResourceSet))
    {
        return PyLogAndRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    QD_CHECK_NOT_NULL(pyResourceSet->m_spResourceSet, PyRaise(PyExc_ValueError, "m_spResourceSet is NULL."));
    std::vector<CSGAnimation*> vecAnimations;
    if (!pyResourceSet->m_spResourceSet->GetAnimations(vecAnimations))
    {
        return PyRaise(PyExc_ValueError, "GetAnimations failed.");
    }
    if (!CSGOptimizer::OptimizeNonTargetTransforms(pNode, vecAnimations))
    {
        return PyRaise(PyExc_ValueError, "OptimizeNonTargetTransforms failed.");
    }
    Py_RETURN_NONE;
}

template <void (CSGNode::*OUTPUT)(const CQDString&) const>
PyObject* OutputToLog(PyObject* pySelf, PyObject*)
{
    const CSGNode* pNode = GetNodeForMethod(pySelf);
    if (pNode == nullptr)
    {
        return nullptr;
    }
    (pNode->*OUTPUT)("");
    Py_RETURN_NONE;
}

PyMethodDef s_arrMethods[] = {
    {"optimize_transforms", PySGNode_optimize_transforms, METH_VARARGS,
     "Optimize transforms not used by animations"},
    {"output_debug_info", OutputToLog<&CSGNode::OutputDebugInfo>, METH_NOARGS, "Outputs debug info"},
    {"output_geom_stats", OutputToLog<&CSGNode::OutputGeomStats>, METH_NOARGS, "Outputs geometry stats"},
    {}};

PyGetSetDef s_arrGetSets[] = {
    PyCompat_GetSet("global_name", GetName<&CSGNode::GetGlobalName>, "Globally unique name of this node",
                    SetName<&CSGNode::SetGlobalName>),
    PyCompat_GetSet("local_name", GetName<&CSGNode::GetLocalName>, "Locally unique name of this node",
                    SetName<&CSGNode::SetLocalName>),
    PyCompat_GetSet("parent", GetParent, "Parent of this node"),
    PyCompat_GetSet("children", GetChildren, "Children of this node"),
    PyCompat_GetSet("geom_bindings", GetGeomBindings, "The geometry bindings for this node"),
    PyCompat_GetSet("world_transform", GetWorldTransform, "The world transform for this node"),
    PyCompat_GetSet("visible", GetVisible, "Whether this node is drawn"),
    PyCompat_GetSet("material", GetMaterial, "What this node is drawn with"),
    PyCompat_GetSet("lights", GetLights, "The lights on this node"),
    PyCompat_GetSet("camera", GetCamera, "The camera on this node"),
    {}};

} // namespace

PyTypeObject PySGNode_Type = PyCompat_MakeType({.szName = "qdsg.SGNode",
                                                .nSize = sizeof(PySGNode),
                                                .fnDealloc = PySGNode_dealloc,
                                                .szDoc = "qdsg SGNode objects",
                                                .fnRepr = PySGNode_repr,
                                                .arrMethods = s_arrMethods,
                                                .arrGetSets = s_arrGetSets});

PyObject* PySGNode_get_from_SGNode(CSGNode* pNode)
{
    if (pNode == nullptr)
    {
        return PyLogAndRaise(PyExc_ValueError, "Handed in NULL SG node.");
    }
    if (const auto* pData = pNode->FindData<CSGData_PySGNode>())
    {
        PyObject* pyNode = reinterpret_cast<PyObject*>(pData->GetPyNode());
        if (pyNode == nullptr)
        {
            return PyLogAndRaise(PyExc_ValueError, "Data object had NULL node.");
        }
        Py_INCREF(pyNode);
        return pyNode;
    }
    PyRef spNode(
        PyWrapper_create(PySGNode_Type, &PySGNode::m_spNode, pNode, "Failed to create a new PySGNode."));
    if (!spNode)
    {
        return nullptr;
    }
    const auto spData = CSGData_PySGNode::Create(reinterpret_cast<PySGNode*>(spNode.get()));
    if (!spData || !pNode->AddData(spData.get()))
    {
        return PyRaise(PyExc_MemoryError, "Failed to create a new PySGNode.");
    }
    return spNode.release();
}
