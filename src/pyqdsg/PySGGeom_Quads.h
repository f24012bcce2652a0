// The Python type of quads, "qdsg.GeomQuads", and that of its iterator.
#pragma once

#include "pyqdsg/PyCompat.h"

class CSGGeom_Quads;

extern PyTypeObject PySGGeom_Quads_Type;
extern PyTypeObject PySGGeom_QuadsIter_Type;

// A new wrapper; null with an exception on failure.
PyObject* PySGGeom_Quads_create(CSGGeom_Quads* pGeom);
