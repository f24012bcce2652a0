// The Python type of triangles, "qdsg.GeomTriangles", and that of its iterator.
#pragma once

#include "pyqdsg/PyCompat.h"

class CSGGeom_Triangles;

extern PyTypeObject PySGGeom_Triangles_Type;
extern PyTypeObject PySGGeom_TrianglesIter_Type;

// A new wrapper; null with an exception on failure.
PyObject* PySGGeom_Triangles_create(CSGGeom_Triangles* pGeom);
