// A node's camera as a dictionary.
#pragma once

#include "pyqdsg/PyCompat.h"

class CSGCamera;

// A new dictionary: kind, name, what the kind has, aspect ratio and the two distances. Null with an exception
// on failure.
PyObject* PySGCamera_create(const CSGCamera& rCamera);
