// The Python type of geometry bindings, "qdsg.SGGeomBinding": a geometry and the vertices that it indexes.
#pragma once

#include "pyqdsg/PyCompat.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>

class CSGGeomBinding;
class CSGSkinBinding;

extern PyTypeObject PySGGeomBinding_Type;

// A new wrapper, of the geometry and its skin on a node (null for none); null with an exception on failure.
PyObject* PySGGeomBinding_create(CSGGeomBinding* pBinding, CSGSkinBinding* pSkinBinding);
