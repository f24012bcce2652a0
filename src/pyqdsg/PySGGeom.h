// What the Python types of geometry and their iterators have in common.
#pragma once

#include "pyqdsg/PySupport.h"

#include <cstdint>

// The wrapper and the iterator of geometry that is a list of elements. KIND names the class of the geometry
// (CGeom) and the maker of the iterator's entries (CEntryMaker), the texts of the types, the iterator's type,
// and counts the elements.
template <class KIND>
struct PySGGeom
{
    using CGeom = typename KIND::CGeom;

    struct CWrapper
    {
        PyObject_HEAD boost::intrusive_ptr<CGeom> m_spGeom;
    };

    struct CIterator
    {
        PyObject_HEAD boost::intrusive_ptr<CGeom> m_spGeom; // null once the iteration has ended
        int32_t m_nNext;
        int32_t m_nCount; // as it was when the iteration began
        typename KIND::CEntryMaker m_objEntryMaker;
    };

    static PyTypeObject MakeType()
    {
        return PyCompat_MakeType({.szName = KIND::TYPE_NAME,
                                  .nSize = sizeof(CWrapper),
                                  .fnDealloc = PyWrapper_dealloc<&CWrapper::m_spGeom>,
                                  .szDoc = KIND::TYPE_DOC,
                                  .fnRepr = Repr,
                                  .arrMethods = ms_arrMethods,
                                  .fnIter = Iterate});
    }

    static PyTypeObject MakeIteratorType()
    {
        return PyCompat_MakeType({.szName = KIND::ITERATOR_TYPE_NAME,
                                  .nSize = sizeof(CIterator),
                                  .fnDealloc = DeallocIterator,
                                  .fnIter = PyObject_SelfIter,
                                  .fnIterNext = GetNext});
    }

    static PyObject* Create(PyTypeObject& rType, CGeom* pGeom)
    {
        if (pGeom == nullptr)
        {
            return PyLogAndRaise(PyExc_ValueError, "Handed in NULL geometry.");
        }
        return PyWrapper_create(rType, &CWrapper::m_spGeom, pGeom, KIND::CREATION_FAILED);
    }

  private:
    static PyObject* Repr(PyObject* pySelf)
    {
        if (pySelf == nullptr)
        {
            return PyLogAndRaise(PyExc_ValueError, "Handed in NULL pySelf.");
        }
        const auto& rspGeom = PyField(pySelf, &CWrapper::m_spGeom);
        if (!rspGeom)
        {
            return PyText_FromString(KIND::REPR_EMPTY);
        }
        CQDString strText = KIND::REPR_BEGIN;
        strText += std::to_string(KIND::GetCount(*rspGeom));
        strText += KIND::REPR_END;
        return PyText_FromString(strText);
    }

    static PyObject* OutputDebugInfo(PyObject* pySelf, PyObject*)
    {
        const CGeom* pGeom = PyWrapper_get(pySelf, &CWrapper::m_spGeom, "Had NULL geometry.");
        if (pGeom == nullptr)
        {
            return nullptr;
        }
        pGeom->OutputDebugInfo("");
        Py_RETURN_NONE;
    }

    static PyObject* Iterate(PyObject* pySelf)
    {
        CGeom* pGeom = PyWrapper_get(pySelf, &CWrapper::m_spGeom, "Had NULL geometry.");
        if (pGeom == nullptr)
        {
            return nullptr;
        }
        // What is allocated is zeroed, and that is how an iterator begins, but for these.
        PyObject* pyIterator =
            PyWrapper_create(KIND::GetIteratorType(), &CIterator::m_spGeom, pGeom, KIND::CREATION_FAILED);
        if (pyIterator != nullptr)
        {
            PyField(pyIterator, &CIterator::m_nCount) = KIND::GetCount(*pGeom);
        }
        return pyIterator;
    }

    static void DeallocIterator(PyObject* pySelf)
    {
        if (pySelf != nullptr)
        {
            std::destroy_at(&PyField(pySelf, &CIterator::m_objEntryMaker));
        }
        PyWrapper_dealloc<&CIterator::m_spGeom>(pySelf);
    }

    static PyObject* GetNext(PyObject* pySelf)
    {
        if (pySelf == nullptr)
        {
            return PyRaise(PyExc_ValueError, "Had NULL self.");
        }
        auto* pyIterator = reinterpret_cast<CIterator*>(pySelf);
        if (!pyIterator->m_spGeom)
        {
            return nullptr;
        }
        const CGeom& rGeom = *pyIterator->m_spGeom;
        if (KIND::GetCount(rGeom) != pyIterator->m_nCount)
        {
            return PyRaise(PyExc_RuntimeError, "%s", KIND::CHANGED_SIZE);
        }
        if (pyIterator->m_nNext >= pyIterator->m_nCount)
        {
            pyIterator->m_spGeom.reset();
            return nullptr;
        }
        return pyIterator->m_objEntryMaker.Make(rGeom, pyIterator->m_nNext++);
    }

    static inline PyMethodDef ms_arrMethods[] = {
        {"output_debug_info", OutputDebugInfo, METH_NOARGS, "Outputs debug info"}, {}};
};

// Makes entries that are tuples of INDICES vertex indices. KIND::GetIndices reads those of an element.
template <class KIND, int INDICES>
class PyIndexTupleMaker
{
  public:
    // A new reference. The tuple of the entry before is used again when nobody else has kept it.
    template <class GEOM>
    PyObject* Make(const GEOM& rGeom, int32_t nElement)
    {
        int32_t arrIndices[INDICES] = {};
        if (!KIND::GetIndices(rGeom, nElement, arrIndices))
        {
            return PyRaise(PyExc_ValueError, "Failed to get the indices of element %d", nElement);
        }
        PyRef arrItems[INDICES];
        for (int n = 0; n < INDICES; ++n)
        {
            arrItems[n].reset(PyIndex_FromLong(arrIndices[n]));
            if (!arrItems[n])
            {
                return nullptr;
            }
        }
        if (!m_spTuple || Py_REFCNT(m_spTuple.get()) != 1)
        {
            m_spTuple.reset(PyTuple_New(INDICES));
            if (!m_spTuple)
            {
                return nullptr;
            }
        }
        // The garbage collector stops looking at tuples that hold nothing it tracks. That needs no care here:
        // the items are integers before and after.
        for (int n = 0; n < INDICES; ++n)
        {
            PyObject* pyOld = PyTuple_GET_ITEM(m_spTuple.get(), n);
            PyTuple_SET_ITEM(m_spTuple.get(), n, arrItems[n].release());
            Py_XDECREF(pyOld);
        }
        Py_INCREF(m_spTuple.get());
        return m_spTuple.get();
    }

  private:
    PyRef m_spTuple;
};
