// Where the C interfaces of Python 2.7 and Python 3 differ. No other file asks for the interpreter's version;
// every file that uses Python includes this one (directly or not) before any other header, as Python.h wants
// it.
#pragma once

#include <Python.h>

#include "qdcommon/CQDString.h"

#include <cstring>
#include <string_view>

// Makes the module object (a borrowed reference) from its name, functions and docstring; null with an
// exception on failure.
using PyModuleCreator = PyObject* (*)(const char* szName, PyMethodDef* arrFunctions, const char* szDoc);

// The module's initialisation, defined by the module file. Returns the module object, null on failure.
PyObject* initqdsg(PyModuleCreator fnCreateModule);

#if PY_MAJOR_VERSION >= 3

inline PyObject* PyCompat_CreateModule(const char* szName, PyMethodDef* arrFunctions, const char* szDoc)
{
    static PyModuleDef s_objDefinition{};
    s_objDefinition.m_base = PyModuleDef_HEAD_INIT;
    s_objDefinition.m_name = szName;
    s_objDefinition.m_doc = szDoc;
    s_objDefinition.m_size = -1;
    s_objDefinition.m_methods = arrFunctions;
    return PyModule_Create(&s_objDefinition);
}

// The interpreter finds the entry point by this name. As an inline function it may be defined here; `used`
// has it made.
extern "C" [[gnu::used, gnu::visibility("default")]] inline PyObject* PyInit_qdsg()
{
    return initqdsg(&PyCompat_CreateModule);
}

inline PyObject* PyIndex_FromLong(long nValue) { return PyLong_FromLong(nValue); }

// Names are UTF-8; bytes that are not cross as lone surrogates and come back as they were.
inline PyObject* PyText_FromString(std::string_view strText)
{
    return PyUnicode_DecodeUTF8(strText.data(), static_cast<Py_ssize_t>(strText.size()), "surrogateescape");
}

inline bool PyText_Check(PyObject* pyObject) { return PyUnicode_Check(pyObject); }

// The bytes of a `str` as a new bytes object; null with an exception on failure.
inline PyObject* PyText_AsBytes(PyObject* pyText)
{
    return PyUnicode_AsEncodedString(pyText, "utf-8", "surrogateescape");
}

// The bytes of a file name (str, bytes or os.PathLike) as the interpreter itself would hand it to the system.
inline PyObject* PyFilename_AsBytes(PyObject* pyFilename)
{
    PyObject* pyBytes = nullptr;
    return PyUnicode_FSConverter(pyFilename, &pyBytes) != 0 ? pyBytes : nullptr;
}

#else

inline PyObject* PyCompat_CreateModule(const char* szName, PyMethodDef* arrFunctions, const char* szDoc)
{
    // The version of the interface that every release since 2.5 has.
    constexpr int API_VERSION = 1013;
    return Py_InitModule4(szName, arrFunctions, szDoc, nullptr, API_VERSION);
}

extern "C" [[gnu::used, gnu::visibility("default")]] inline void initqdsg()
{
    initqdsg(&PyCompat_CreateModule);
}

inline PyObject* PyIndex_FromLong(long nValue) { return PyInt_FromLong(nValue); }

inline PyObject* PyText_FromString(std::string_view strText)
{
    return PyString_FromStringAndSize(strText.data(), static_cast<Py_ssize_t>(strText.size()));
}

inline bool PyText_Check(PyObject* pyObject) { return PyString_Check(pyObject); }

inline PyObject* PyText_AsBytes(PyObject* pyText)
{
    Py_INCREF(pyText);
    return pyText;
}

inline PyObject* PyFilename_AsBytes(PyObject* pyFilename)
{
    if (PyUnicode_Check(pyFilename))
    {
        return PyUnicode_AsUTF8String(pyFilename);
    }
    if (!PyString_Check(pyFilename))
    {
        return PyErr_Format(PyExc_TypeError, "must be string, not %.50s", Py_TYPE(pyFilename)->tp_name);
    }
    return PyText_AsBytes(pyFilename);
}

#endif

// An attribute of a type. The casts are for Python 2.7, whose struct has pointers to char.
inline PyGetSetDef PyCompat_GetSet(const char* szName, getter fnGet, const char* szDoc,
                                   setter fnSet = nullptr)
{
    return {const_cast<char*>(szName), fnGet, fnSet, const_cast<char*>(szDoc), nullptr};
}

// What a type of this module is made of; the tables end with an empty entry.
struct PyTypeParts
{
    const char* szName;
    Py_ssize_t nSize;
    destructor fnDealloc;
    const char* szDoc = nullptr;
    reprfunc fnRepr = nullptr;
    PyMethodDef* arrMethods = nullptr;
    PyGetSetDef* arrGetSets = nullptr;
    getiterfunc fnIter = nullptr;
    iternextfunc fnIterNext = nullptr;
};

// A static type with the default flags and without a creation slot: Python can neither derive from it nor
// call it.
inline PyTypeObject PyCompat_MakeType(const PyTypeParts& rParts)
{
    const PyVarObject arrHead[] = {PyVarObject_HEAD_INIT(nullptr, 0)};
    PyTypeObject objType{};
    std::memcpy(&objType, arrHead, sizeof(arrHead)); // its first fields, under a name in Python 3 alone
    objType.tp_name = rParts.szName;
    objType.tp_basicsize = rParts.nSize;
    objType.tp_dealloc = rParts.fnDealloc;
    objType.tp_doc = rParts.szDoc;
    objType.tp_repr = rParts.fnRepr;
    objType.tp_methods = rParts.arrMethods;
    objType.tp_getset = rParts.arrGetSets;
    objType.tp_iter = rParts.fnIter;
    objType.tp_iternext = rParts.fnIterNext;
    objType.tp_flags = Py_TPFLAGS_DEFAULT;
    return objType;
}
