// A light as a dictionary.
#pragma once

#include "pyqdsg/PyCompat.h"

class CSGLight;

// A new dictionary: kind, name and colour, and what the kind has besides. Null with an exception on failure.
PyObject* PySGLight_create(const CSGLight* pLight);
