// The Python type of animations, "qdsg.SGAnimation".
#pragma once

#include "pyqdsg/PyCompat.h"

class CSGAnimation;

extern PyTypeObject PySGAnimation_Type;

// A new wrapper; null with an exception on failure.
PyObject* PySGAnimation_create(CSGAnimation* pAnimation);
