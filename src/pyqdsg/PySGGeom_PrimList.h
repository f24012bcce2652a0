// The Python type of primitive lists, "qdsg.GeomPrimList", and that of its iterator.
#pragma once

#include "pyqdsg/PyCompat.h"

class CSGGeom_PrimList;

extern PyTypeObject PySGGeom_PrimList_Type;
extern PyTypeObject PySGGeom_PrimListIter_Type;

// A new wrapper; null with an exception on failure.
PyObject* PySGGeom_PrimList_create(CSGGeom_PrimList* pGeom);
