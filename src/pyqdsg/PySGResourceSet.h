// The Python type of resource sets, "qdsg.SGResourceSet".
#pragma once

#include "pyqdsg/PyCompat.h"

#include "qdscenegraph/resource/CSGResourceSet.h"

struct PySGResourceSet
{
    PyObject_HEAD boost::intrusive_ptr<CSGResourceSet> m_spResourceSet;
};

extern PyTypeObject PySGResourceSet_Type;

// A new wrapper; null with an exception on failure.
PyObject* PySGResourceSet_create(const boost::intrusive_ptr<CSGResourceSet>& spResourceSet);
