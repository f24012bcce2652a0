// What the wrapper types share: owned references, raising, and the fields of wrapper objects.
#pragma once

#include "pyqdsg/PyCompat.h"

#include "qdcommon/CLogChecks.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <memory>
#include <new>
#include <optional>
#include <utility>

// The log source of the module.
[[gnu::visibility("default")]] extern CLogSource PY_QDSG;

struct PyReleaser
{
    void operator()(PyObject* pyObject) const { Py_DECREF(pyObject); }
};
// An owned reference.
using PyRef = std::unique_ptr<PyObject, PyReleaser>;

// Sets a Python exception. The result is the null that the caller returns.
template <class... Args>
std::nullptr_t PyRaise(PyObject* pyException, const char* szFormat, const Args&... rArgs)
{
    PyErr_Format(pyException, szFormat, LogDetail::ToPrintf(rArgs)...);
    return nullptr;
}

// The same, with the message in the log as well.
template <class... Args>
std::nullptr_t PyLogAndRaise(PyObject* pyException, CLogText<std::type_identity_t<Args>...> objText,
                             const Args&... rArgs)
{
    Log(PY_QDSG, LOG_ERROR, objText, rArgs...);
    return PyRaise(pyException, objText.GetFormat(), rArgs...);
}

// The characters of a `str`; false with an exception for one that holds a null character or cannot be
// encoded.
inline bool PyText_AsString(PyObject* pyText, CQDString& rText)
{
    const PyRef spBytes(PyText_AsBytes(pyText));
    char* szText = nullptr;
    if (!spBytes || PyBytes_AsStringAndSize(spBytes.get(), &szText, nullptr) != 0)
    {
        return false;
    }
    rText = szText;
    return true;
}

// Converters for the format "O&" of argument parsers, into a std::optional<CQDString>.
inline int PyArg_ConvertText(PyObject* pyText, void* pResult)
{
    if (!PyText_Check(pyText))
    {
        PyRaise(PyExc_TypeError, "Expected a string.");
        return 0;
    }
    return PyText_AsString(pyText, static_cast<std::optional<CQDString>*>(pResult)->emplace());
}

inline int PyArg_ConvertFilename(PyObject* pyFilename, void* pResult)
{
    const PyRef spBytes(PyFilename_AsBytes(pyFilename));
    char* szFilename = nullptr;
    if (!spBytes || PyBytes_AsStringAndSize(spBytes.get(), &szFilename, nullptr) != 0)
    {
        return 0;
    }
    static_cast<std::optional<CQDString>*>(pResult)->emplace(szFilename);
    return 1;
}

// A wrapper type's objects are structs PY of the Python header and one field (iterators have more);
// &PY::field stands for both.
template <class PY, class T>
T& PyField(PyObject* pyObject, T PY::*pField)
{
    return reinterpret_cast<PY*>(pyObject)->*pField;
}

// A new wrapper object around a value; null with MemoryError and the given message when there is no memory.
template <class PY, class T>
PyObject* PyWrapper_create(PyTypeObject& rType, T PY::*pField, std::type_identity_t<T> objValue,
                           const char* szFailure)
{
    PyObject* pyObject = rType.tp_alloc(&rType, 0);
    if (pyObject == nullptr)
    {
        return PyRaise(PyExc_MemoryError, "%s", szFailure);
    }
    ::new (&PyField(pyObject, pField)) T(std::move(objValue));
    return pyObject;
}

// tp_dealloc of a wrapper type.
template <auto FIELD>
void PyWrapper_dealloc(PyObject* pySelf)
{
    if (pySelf == nullptr)
    {
        Log(PY_QDSG, LOG_ERROR, "Handed in NULL pySelf.");
        return;
    }
    std::destroy_at(&PyField(pySelf, FIELD));
    Py_TYPE(pySelf)->tp_free(pySelf);
}

// The object (borrowed) that a wrapper holds; null with an exception for a wrapper without one.
template <class PY, class T>
T* PyWrapper_get(PyObject* pySelf, boost::intrusive_ptr<T> PY::*pField, const char* szEmpty,
                 PyObject* pyException = PyExc_ValueError)
{
    if (pySelf == nullptr)
    {
        return PyRaise(PyExc_ValueError, "Had NULL self.");
    }
    T* pObject = PyField(pySelf, pField).get();
    if (pObject == nullptr)
    {
        PyRaise(pyException, "%s", szEmpty);
    }
    return pObject;
}

// A new list of what `fnWrap` makes (new references) of the elements of a range; elements that are null are
// passed over. Null with an exception, and nothing kept, when one cannot be made.
template <class RANGE, class WRAP>
PyObject* PyList_of(const RANGE& rRange, WRAP&& fnWrap, const char* szFailure)
{
    PyRef spList(PyList_New(0));
    if (!spList)
    {
        return PyRaise(PyExc_MemoryError, "%s", szFailure);
    }
    for (auto* pElement : rRange)
    {
        if (pElement == nullptr)
        {
            continue;
        }
        const PyRef spWrapper(fnWrap(pElement));
        if (!spWrapper || PyList_Append(spList.get(), spWrapper.get()) != 0)
        {
            return nullptr;
        }
    }
    return spList.release();
}
