// A node's material as a dictionary.
#pragma once

#include "pyqdsg/PyCompat.h"

class CSGMaterial;

// A new dictionary: the name, each of the eight slots, the transparent mode and the total transparency. Null
// with an exception on failure.
PyObject* PySGMaterial_create(const CSGMaterial& rMaterial);
