// Builds the dictionaries in which scene objects without a type of their own are handed to Python.
#pragma once

#include "pyqdsg/PySupport.h"

#include <span>
#include <string_view>

// A dictionary that is filled entry by entry; the first failure leaves an exception and makes it null.
class CPyDict
{
  public:
    CPyDict() : m_spDict(PyDict_New()) {}

    // A null value (with its exception) is a failure.
    void Add(const char* szKey, PyRef spValue)
    {
        if (m_spDict && (!spValue || PyDict_SetItemString(m_spDict.get(), szKey, spValue.get()) != 0))
        {
            m_spDict.reset();
        }
    }
    void Add(const char* szKey, std::string_view strValue) { Add(szKey, PyRef(PyText_FromString(strValue))); }
    void Add(const char* szKey, float fValue) { Add(szKey, PyRef(PyFloat_FromDouble(fValue))); }
    void Add(const char* szKey, int32_t nValue) { Add(szKey, PyRef(Py_BuildValue("i", nValue))); }
    // A tuple of floats.
    void Add(const char* szKey, std::span<const float> arrValues)
    {
        PyRef spTuple(PyTuple_New(static_cast<Py_ssize_t>(arrValues.size())));
        for (size_t n = 0; spTuple && n < arrValues.size(); ++n)
        {
            PyObject* pyValue = PyFloat_FromDouble(arrValues[n]);
            if (pyValue == nullptr)
            {
                spTuple.reset();
                break;
            }
            PyTuple_SET_ITEM(spTuple.get(), static_cast<Py_ssize_t>(n), pyValue);
        }
        Add(szKey, std::move(spTuple));
    }

    PyObject* Release() { return m_spDict.release(); }

  private:
    PyRef m_spDict;
};
