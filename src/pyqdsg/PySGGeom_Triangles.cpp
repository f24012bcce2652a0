#include "pyqdsg/PySGGeom_Triangles.h"

#include "pyqdsg/PySGGeom.h"
#include "qdscenegraph/geometry/CSGGeom_Triangles.h"

namespace
{

struct CKind
{
    using CGeom = CSGGeom_Triangles;
    using CEntryMaker = PyIndexTupleMaker<CKind, 3>;

    static constexpr const char* TYPE_NAME = "qdsg.GeomTriangles";
    static constexpr const char* TYPE_DOC = "qdsg GeomTriangles objects";
    static constexpr const char* ITERATOR_TYPE_NAME = "qdsg.GeomTriangles-iterator";
    static constexpr const char* REPR_BEGIN = "<qdsg.GeomTriangles with ";
    static constexpr const char* REPR_END = " triangles>";
    // The class's name, unlike above: scripts know it so.
    static constexpr const char* REPR_EMPTY = "<qdsg.SGGeom_Triangles - Empty>";
    static constexpr const char* CREATION_FAILED = "Failed to create a new PySGGeom_Triangles.";
    static constexpr const char* CHANGED_SIZE = "Triangles changed size during iteration";

    static PyTypeObject& GetIteratorType() { return PySGGeom_TrianglesIter_Type; }
    static int32_t GetCount(const CGeom& rGeom) { return rGeom.GetNumTriangles(); }
    static bool GetIndices(const CGeom& rGeom, int32_t nElement, int32_t (&rIndices)[3])
    {
        return rGeom.GetTriangle(nElement, rIndices);
    }
};

} // namespace

PyTypeObject PySGGeom_Triangles_Type = PySGGeom<CKind>::MakeType();
PyTypeObject PySGGeom_TrianglesIter_Type = PySGGeom<CKind>::MakeIteratorType();

PyObject* PySGGeom_Triangles_create(CSGGeom_Triangles* pGeom)
{
    return PySGGeom<CKind>::Create(PySGGeom_Triangles_Type, pGeom);
}
