#include "pyqdsg/PySGGeomBinding.h"

#include "pyqdsg/PySGGeom_PrimList.h"
#include "pyqdsg/PySGGeom_Quads.h"
#include "pyqdsg/PySGGeom_Triangles.h"
#include "pyqdsg/PySupport.h"
#include "qdscenegraph/geometry/CSGGeomBinding.h"
#include "qdscenegraph/geometry/CSGGeom_PrimList.h"
#include "qdscenegraph/geometry/CSGGeom_Quads.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"
#include "qdscenegraph/geometry/CSGVertexBuffer.h"
#include "qdscenegraph/skin/CSGSkinBinding.h"

#include <algorithm>

namespace
{

struct PySGGeomBinding
{
    PyObject_HEAD boost::intrusive_ptr<CSGGeomBinding> m_spBinding;
    // Its skin on the node that it was asked from; null without one.
    boost::intrusive_ptr<CSGSkinBinding> m_spSkinBinding;
};

void PySGGeomBinding_dealloc(PyObject* pySelf)
{
    if (pySelf != nullptr)
    {
        std::destroy_at(&PyField(pySelf, &PySGGeomBinding::m_spSkinBinding));
    }
    PyWrapper_dealloc<&PySGGeomBinding::m_spBinding>(pySelf);
}

CSGGeomBinding* GetBinding(PyObject* pySelf)
{
    return PyWrapper_get(pySelf, &PySGGeomBinding::m_spBinding, "Had NULL binding.");
}

PyObject* PySGGeomBinding_repr(PyObject* pySelf)
{
    if (pySelf == nullptr)
    {
        return PyLogAndRaise(PyExc_ValueError, "Handed in NULL pySelf.");
    }
    return PyText_FromString(PyField(pySelf, &PySGGeomBinding::m_spBinding) ? "<qdsg.SGGeomBinding>"
                                                                            : "<qdsg.SGGeomBinding - Empty>");
}

// A list with a tuple of nFloats floats for each vertex. Vertices are uiStride floats apart and begin with
// nStored floats; what is missing is 0.
PyObject* BuildVertexList(std::span<const float> spnData, size_t uiStride, int32_t nStored, int32_t nFloats)
{
    const auto nVertices = static_cast<Py_ssize_t>((spnData.size() + uiStride - 1) / uiStride);
    PyRef spList(PyList_New(nVertices));
    if (!spList)
    {
        return PyRaise(PyExc_MemoryError, "Failed to create a new vertices list.");
    }
    for (Py_ssize_t nVertex = 0; nVertex < nVertices; ++nVertex)
    {
        PyObject* pyTuple = PyTuple_New(nFloats);
        if (pyTuple == nullptr)
        {
            return nullptr;
        }
        PyList_SET_ITEM(spList.get(), nVertex, pyTuple);
        const float* pVertex = &spnData[static_cast<size_t>(nVertex) * uiStride];
        for (int32_t n = 0; n < nFloats; ++n)
        {
            PyObject* pyFloat = PyFloat_FromDouble(n < nStored ? static_cast<double>(pVertex[n]) : 0.0);
            if (pyFloat == nullptr)
            {
                return nullptr;
            }
            PyTuple_SET_ITEM(pyTuple, n, pyFloat);
        }
    }
    return spList.release();
}

PyObject* BuildMemberList(const CSGVertexBuffer& rVertexBuffer, const CSGVertexFormat::CMember& rMember,
                          int32_t nFloats)
{
    const std::span<const float> spnData = rVertexBuffer.GetData();
    const auto uiOffset = static_cast<size_t>(rMember.m_nOffset);
    return BuildVertexList(spnData.subspan(std::min(uiOffset, spnData.size())),
                           static_cast<size_t>(rVertexBuffer.GetFormat().GetFloatsPerVertex()),
                           rMember.m_nFloats, nFloats);
}

constexpr int32_t COMPONENTS = 3; // of a position

PyObject* GetVertices(PyObject* pySelf, void*)
{
    const CSGGeomBinding* pBinding = GetBinding(pySelf);
    if (pBinding == nullptr)
    {
        return nullptr;
    }
    const CSGVertexBuffer& rVertexBuffer = *pBinding->GetVertexBuffer();
    const auto* pMember = rVertexBuffer.GetFormat().FindLowestMember(CSGVertexFormat::MEMBER_POSITION);
    return pMember != nullptr ? BuildMemberList(rVertexBuffer, *pMember, COMPONENTS) : PyList_New(0);
}

PyObject* GetSkinnedVertices(PyObject* pySelf, void*)
{
    if (GetBinding(pySelf) == nullptr)
    {
        return nullptr;
    }
    const CSGSkinBinding* pSkinBinding = PyField(pySelf, &PySGGeomBinding::m_spSkinBinding).get();
    if (pSkinBinding == nullptr)
    {
        Py_RETURN_NONE;
    }
    for (int32_t nJoint = 0; nJoint < pSkinBinding->GetNumJoints(); ++nJoint)
    {
        // The tree is gone, or was saved without the joint. One without a name stands for the bind shape.
        const CQDCompactString& rName = pSkinBinding->GetSkin()->GetJoint(nJoint)->GetLocalName();
        if (!rName.empty() && !pSkinBinding->GetJointNode(nJoint))
        {
            return PyRaise(PyExc_ValueError, "The skin's joint '%s' has no node.", rName);
        }
    }
    std::vector<float> vecPositions;
    if (!pSkinBinding->ComputeSkinnedVertices(vecPositions))
    {
        return PyRaise(PyExc_ValueError, "Failed to compute the skinned vertices.");
    }
    return BuildVertexList(vecPositions, COMPONENTS, COMPONENTS, COMPONENTS);
}

template <CSGVertexFormat::EMember MEMBER>
PyObject* GetMember(PyObject* pySelf, void*)
{
    const CSGGeomBinding* pBinding = GetBinding(pySelf);
    if (pBinding == nullptr)
    {
        return nullptr;
    }
    const CSGVertexBuffer& rVertexBuffer = *pBinding->GetVertexBuffer();
    const auto* pMember = rVertexBuffer.GetFormat().FindLowestMember(MEMBER);
    if (pMember == nullptr)
    {
        Py_RETURN_NONE;
    }
    return BuildMemberList(rVertexBuffer, *pMember, pMember->m_nFloats);
}

// The wrapper of the geometry's kind; None for a kind that Python has no type for (lines).
PyObject* BuildPyGeometry(CSGGeom* pGeometry)
{
    if (pGeometry == nullptr)
    {
        return PyLogAndRaise(PyExc_ValueError, "Handed in NULL geometry");
    }
    if (auto* pTriangles = dynamic_cast<CSGGeom_Triangles*>(pGeometry))
    {
        return PySGGeom_Triangles_create(pTriangles);
    }
    if (auto* pQuads = dynamic_cast<CSGGeom_Quads*>(pGeometry))
    {
        return PySGGeom_Quads_create(pQuads);
    }
    if (auto* pPrimList = dynamic_cast<CSGGeom_PrimList*>(pGeometry))
    {
        return PySGGeom_PrimList_create(pPrimList);
    }
    Py_RETURN_NONE;
}

PyObject* GetGeometry(PyObject* pySelf, void*)
{
    const CSGGeomBinding* pBinding = GetBinding(pySelf);
    return pBinding != nullptr ? BuildPyGeometry(pBinding->GetGeom()) : nullptr;
}

PyObject* PySGGeomBinding_output_debug_info(PyObject* pySelf, PyObject*)
{
    const CSGGeomBinding* pBinding = GetBinding(pySelf);
    if (pBinding == nullptr)
    {
        return nullptr;
    }
    pBinding->OutputDebugInfo("");
    Py_RETURN_NONE;
}

PyMethodDef s_arrMethods[] = {
    {"output_debug_info", PySGGeomBinding_output_debug_info, METH_NOARGS, "Outputs debug info"}, {}};

PyGetSetDef s_arrGetSets[] = {
    PyCompat_GetSet("vertices", GetVertices, "List of 3-tuples of vertex positions"),
    PyCompat_GetSet("geometry", GetGeometry, "Object representing the geometry"),
    PyCompat_GetSet("normals", GetMember<CSGVertexFormat::MEMBER_NORMAL>,
                    "List of tuples of vertex normals, or None"),
    PyCompat_GetSet("texcoords", GetMember<CSGVertexFormat::MEMBER_TEXCOORD>,
                    "List of tuples of vertex texture coordinates, or None"),
    PyCompat_GetSet("colors", GetMember<CSGVertexFormat::MEMBER_COLOR>,
                    "List of tuples of vertex colors, or None"),
    PyCompat_GetSet("skinned_vertices", GetSkinnedVertices,
                    "List of 3-tuples of vertex positions at the current pose, or None"),
    {}};

} // namespace

PyTypeObject PySGGeomBinding_Type = PyCompat_MakeType({.szName = "qdsg.SGGeomBinding",
                                                       .nSize = sizeof(PySGGeomBinding),
                                                       .fnDealloc = PySGGeomBinding_dealloc,
                                                       .szDoc = "qdsg SGGeomBinding objects",
                                                       .fnRepr = PySGGeomBinding_repr,
                                                       .arrMethods = s_arrMethods,
                                                       .arrGetSets = s_arrGetSets});

PyObject* PySGGeomBinding_create(CSGGeomBinding* pBinding, CSGSkinBinding* pSkinBinding)
{
    if (pBinding == nullptr)
    {
        return PyLogAndRaise(PyExc_ValueError, "Handed in NULL binding.");
    }
    PyObject* pyBinding = PyWrapper_create(PySGGeomBinding_Type, &PySGGeomBinding::m_spBinding, pBinding,
                                           "Failed to create a new PySGGeomBinding.");
    if (pyBinding != nullptr)
    {
        // What is allocated is zeroed: a link to nothing.
        PyField(pyBinding, &PySGGeomBinding::m_spSkinBinding) = pSkinBinding;
    }
    return pyBinding;
}
