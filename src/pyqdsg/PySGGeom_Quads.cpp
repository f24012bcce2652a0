#include "pyqdsg/PySGGeom_Quads.h"

#include "pyqdsg/PySGGeom.h"
#include "qdscenegraph/geometry/CSGGeom_Quads.h"

namespace
{

struct CKind
{
    using CGeom = CSGGeom_Quads;
    using CEntryMaker = PyIndexTupleMaker<CKind, 4>;

    static constexpr const char* TYPE_NAME = "qdsg.GeomQuads";
    static constexpr const char* TYPE_DOC = "qdsg GeomQuads objects";
    static constexpr const char* ITERATOR_TYPE_NAME = "qdsg.GeomQuads-iterator";
    static constexpr const char* REPR_BEGIN = "<qdsg.GeomQuads with ";
    static constexpr const char* REPR_END = " quads>";
    // The class's name, unlike above: scripts know it so.
    static constexpr const char* REPR_EMPTY = "<qdsg.SGGeom_Quads - Empty>";
    static constexpr const char* CREATION_FAILED = "Failed to create a new PySGGeom_Quads.";
    static constexpr const char* CHANGED_SIZE = "Quads changed size during iteration";

    static PyTypeObject& GetIteratorType() { return PySGGeom_QuadsIter_Type; }
    static int32_t GetCount(const CGeom& rGeom) { return rGeom.GetNumQuads(); }
    static bool GetIndices(const CGeom& rGeom, int32_t nElement, int32_t (&rIndices)[4])
    {
        return rGeom.GetQuad(nElement, rIndices);
    }
};

} // namespace

PyTypeObject PySGGeom_Quads_Type = PySGGeom<CKind>::MakeType();
PyTypeObject PySGGeom_QuadsIter_Type = PySGGeom<CKind>::MakeIteratorType();

PyObject* PySGGeom_Quads_create(CSGGeom_Quads* pGeom)
{
    return PySGGeom<CKind>::Create(PySGGeom_Quads_Type, pGeom);
}
