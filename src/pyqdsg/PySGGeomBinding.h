// The Python type of geometry bindings, "qdsg.SGGeomBinding": a geometry and the vertices that it indexes.
#pragma once

#include "pyqdsg/PyCompat.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

class CSGGeomBinding;

extern PyTypeObject PySGGeomBinding_Type;

// A new wrapper; null with an exception on failure.
PyObject* PySGGeomBinding_create(CSGGeomBinding* pBinding);
