#include "pyqdsg/PyTransform3.h"

#include "pyqdsg/PySupport.h"

namespace
{

struct PyTransform3
{
    PyObject_HEAD CTransform3 m_objTransform;
};

PyObject* PyTransform3_repr(PyObject*) { return PyText_FromString("<qdsg.Transform3>"); }

template <CSGFloat3 (CTransform3::*TRANSFORM)(const CSGFloat3&) const>
PyObject* Transform(PyObject* pySelf, PyObject* pyArgs, const char* szFormat)
{
    if (pySelf == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Had NULL self.");
    }
    CSGFloat3 objVector;
    if (!PyArg_ParseTuple(pyArgs, szFormat, &objVector.x, &objVector.y, &objVector.z))
    {
        return PyRaise(PyExc_ValueError, "Failed to parse arguments.");
    }
    const CSGFloat3 objResult = (PyField(pySelf, &PyTransform3::m_objTransform).*TRANSFORM)(objVector);
    return Py_BuildValue("(fff)", static_cast<double>(objResult.x), static_cast<double>(objResult.y),
                         static_cast<double>(objResult.z));
}

PyObject* PyTransform3_transform_point(PyObject* pySelf, PyObject* pyArgs)
{
    return Transform<&CTransform3::TransformPoint>(pySelf, pyArgs, "(fff):transform_point");
}

PyObject* PyTransform3_transform_dir(PyObject* pySelf, PyObject* pyArgs)
{
    return Transform<&CTransform3::TransformDir>(pySelf, pyArgs, "(fff):transform_dir");
}

// A row of the 4x4 matrix.
PyRef BuildRow(float fX, float fY, float fZ, double fW)
{
    return PyRef(Py_BuildValue("(dddd)", static_cast<double>(fX), static_cast<double>(fY),
                               static_cast<double>(fZ), fW));
}

PyObject* GetMatrix(PyObject* pySelf, void*)
{
    if (pySelf == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Had NULL self.");
    }
    const CTransform3& rTransform = PyField(pySelf, &PyTransform3::m_objTransform);
    const auto& m = rTransform.m_objMatrix.m;
    const CSGFloat3& t = rTransform.m_objTranslation;
    const PyRef arrRows[] = {BuildRow(m[0][0], m[0][1], m[0][2], 0.0),
                             BuildRow(m[1][0], m[1][1], m[1][2], 0.0),
                             BuildRow(m[2][0], m[2][1], m[2][2], 0.0), BuildRow(t.x, t.y, t.z, 1.0)};
    // A row that could not be made has left its exception; "O" passes it on.
    return Py_BuildValue("(OOOO)", arrRows[0].get(), arrRows[1].get(), arrRows[2].get(), arrRows[3].get());
}

PyMethodDef s_arrMethods[] = {
    {"transform_point", PyTransform3_transform_point, METH_VARARGS, "Transform a 3-tuple as a point"},
    {"transform_dir", PyTransform3_transform_dir, METH_VARARGS, "Transform a 3-tuple as a direction"},
    {}};

PyGetSetDef s_arrGetSets[] = {
    PyCompat_GetSet("matrix", GetMatrix, "The 4x4 matrix, a tuple of four rows, for row vectors"), {}};

} // namespace

PyTypeObject PyTransform3_Type =
    PyCompat_MakeType({.szName = "qdsg.Transform3",
                       .nSize = sizeof(PyTransform3),
                       .fnDealloc = PyWrapper_dealloc<&PyTransform3::m_objTransform>,
                       .szDoc = "qdsg Transform3 objects",
                       .fnRepr = PyTransform3_repr,
                       .arrMethods = s_arrMethods,
                       .arrGetSets = s_arrGetSets});

PyObject* PyTransform3_create(const CTransform3& rTransform)
{
    return PyWrapper_create(PyTransform3_Type, &PyTransform3::m_objTransform, rTransform,
                            "Failed to create a new PyTransform3.");
}
