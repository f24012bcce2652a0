#include "pyqdsg/PySGGeom_PrimList.h"

#include "pyqdsg/PySGGeom.h"
#include "qdscenegraph/geometry/CSGGeom_PrimList.h"
#include "qdscenegraph/geometry/CSGPrim_Polygon.h"
#include "qdscenegraph/geometry/CSGPrim_Quad.h"
#include "qdscenegraph/geometry/CSGPrim_Triangle.h"

namespace
{

// The name of a primitive's kind in Python; null for an unknown one.
const char* GetKindName(const CSGPrimitive& rPrimitive)
{
    const CSGTypeInfo<CSGPrimitive>* pTypeInfo = rPrimitive.GetTypeInfo();
    return pTypeInfo == &CSGPrim_Triangle::ms_objTypeInfo  ? "triangle"
           : pTypeInfo == &CSGPrim_Quad::ms_objTypeInfo    ? "quad"
           : pTypeInfo == &CSGPrim_Polygon::ms_objTypeInfo ? "polygon"
                                                           : nullptr;
}

// Makes entries (kind, indices).
class CPrimitiveEntryMaker
{
  public:
    PyObject* Make(const CSGGeom_PrimList& rGeom, int32_t nPrimitive) const
    {
        const CSGPrimitive* pPrimitive = rGeom.GetPrimitive(nPrimitive);
        if (pPrimitive == nullptr)
        {
            return PyRaise(PyExc_ValueError, "Had NULL primitive at index %d", nPrimitive);
        }
        const char* szKind = GetKindName(*pPrimitive);
        if (szKind == nullptr)
        {
            return PyRaise(PyExc_ValueError, "Found primitive of unexpected type at index %d", nPrimitive);
        }
        const std::span<const int32_t> spnIndices = pPrimitive->GetIndices();
        PyRef spIndices(PyTuple_New(static_cast<Py_ssize_t>(spnIndices.size())));
        if (!spIndices)
        {
            return nullptr;
        }
        Py_ssize_t nItem = 0;
        for (const int32_t nIndex : spnIndices)
        {
            PyObject* pyIndex = PyIndex_FromLong(nIndex);
            if (pyIndex == nullptr)
            {
                return nullptr;
            }
            PyTuple_SET_ITEM(spIndices.get(), nItem++, pyIndex);
        }
        return Py_BuildValue("(sO)", szKind, spIndices.get());
    }
};

struct CKind
{
    using CGeom = CSGGeom_PrimList;
    using CEntryMaker = CPrimitiveEntryMaker;

    static constexpr const char* TYPE_NAME = "qdsg.GeomPrimList";
    static constexpr const char* TYPE_DOC = "qdsg GeomPrimList objects";
    static constexpr const char* ITERATOR_TYPE_NAME = "qdsg.GeomPrimList-iterator";
    static constexpr const char* REPR_BEGIN = "<qdsg.GeomPrimList with ";
    static constexpr const char* REPR_END = " primitives>";
    static constexpr const char* REPR_EMPTY = "<qdsg.GeomPrimList - Empty>";
    static constexpr const char* CREATION_FAILED = "Failed to create a new PySGGeom_PrimList.";
    static constexpr const char* CHANGED_SIZE = "PrimList changed size during iteration";

    static PyTypeObject& GetIteratorType() { return PySGGeom_PrimListIter_Type; }
    static int32_t GetCount(const CGeom& rGeom) { return rGeom.GetNumPrimitives(); }
};

} // namespace

PyTypeObject PySGGeom_PrimList_Type = PySGGeom<CKind>::MakeType();
PyTypeObject PySGGeom_PrimListIter_Type = PySGGeom<CKind>::MakeIteratorType();

PyObject* PySGGeom_PrimList_create(CSGGeom_PrimList* pGeom)
{
    return PySGGeom<CKind>::Create(PySGGeom_PrimList_Type, pGeom);
}
