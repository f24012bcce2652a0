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

namespace
{

struct PySGGeomBinding
{
    PyObject_HEAD boost::intrusive_ptr<CSGGeomBinding> m_spBinding;
};

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

// A list with a tuple of nFloats floats for each vertex; components that the format does not have are 0.
PyObject* BuildVertexList(const CSGVertexBuffer& rVertexBuffer, const CSGVertexFormat::CMember& rMember,
                          int32_t nFloats)
{
    const std::span<const float> spnData = rVertexBuffer.GetData();
    const auto uiStride = static_cast<size_t>(rVertexBuffer.GetFormat().GetFloatsPerVertex());
    const auto uiOffset = static_cast<size_t>(rMember.m_nOffset);
    const int32_t nVertices = rVertexBuffer.GetNumVertices();
    PyRef spList(PyList_New(nVertices));
    if (!spList)
    {
        return PyRaise(PyExc_MemoryError, "Failed to create a new vertices list.");
    }
    for (int32_t nVertex = 0; nVertex < nVertices; ++nVertex)
    {
        PyObject* pyTuple = PyTuple_New(nFloats);
        if (pyTuple == nullptr)
        {
            return nullptr;
        }
        PyList_SET_ITEM(spList.get(), nVertex, pyTuple);
        const float* pVertex = &spnData[static_cast<size_t>(nVertex) * uiStride + uiOffset];
        for (int32_t n = 0; n < nFloats; ++n)
        {
            PyObject* pyFloat =
                PyFloat_FromDouble(n < rMember.m_nFloats ? static_cast<double>(pVertex[n]) : 0.0);
            if (pyFloat == nullptr)
            {
                return nullptr;
            }
            PyTuple_SET_ITEM(pyTuple, n, pyFloat);
        }
    }
    return spList.release();
}

PyObject* GetVertices(PyObject* pySelf, void*)
{
    constexpr int32_t COMPONENTS = 3;
    const CSGGeomBinding* pBinding = GetBinding(pySelf);
    if (pBinding == nullptr)
    {
        return nullptr;
    }
    const CSGVertexBuffer& rVertexBuffer = *pBinding->GetVertexBuffer();
    const auto* pMember = rVertexBuffer.GetFormat().FindLowestMember(CSGVertexFormat::MEMBER_POSITION);
    return pMember != nullptr ? BuildVertexList(rVertexBuffer, *pMember, COMPONENTS) : PyList_New(0);
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
    return BuildVertexList(rVertexBuffer, *pMember, pMember->m_nFloats);
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
    {}};

} // namespace

PyTypeObject PySGGeomBinding_Type =
    PyCompat_MakeType({.szName = "qdsg.SGGeomBinding",
                       .nSize = sizeof(PySGGeomBinding),
                       .fnDealloc = PyWrapper_dealloc<&PySGGeomBinding::m_spBinding>,
                       .szDoc = "qdsg SGGeomBinding objects",
                       .fnRepr = PySGGeomBinding_repr,
                       .arrMethods = s_arrMethods,
                       .arrGetSets = s_arrGetSets});

PyObject* PySGGeomBinding_create(CSGGeomBinding* pBinding)
{
    if (pBinding == nullptr)
    {
        return PyLogAndRaise(PyExc_ValueError, "Handed in NULL binding.");
    }
    return PyWrapper_create(PySGGeomBinding_Type, &PySGGeomBinding::m_spBinding, pBinding,
                            "Failed to create a new PySGGeomBinding.");
}
