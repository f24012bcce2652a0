// The Python type of transforms, "qdsg.Transform3".
#pragma once

#include "pyqdsg/PyCompat.h"

#include "qdcommon/CTransform3.h"

extern PyTypeObject PyTransform3_Type;

// A new wrapper with a copy of the transform; null with an exception on failure.
PyObject* PyTransform3_create(const CTransform3& rTransform);
