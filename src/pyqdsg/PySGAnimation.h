// The Python type of animations, "qdsg.SGAnimation".
#pragma once

#include "pyqdsg/PyCompat.h"

#include "qdscenegraph/animation/CSGAnimation.h"

struct PySGAnimation
{
    PyObject_HEAD CSGAnimation::CAnimationPtr m_spAnimation;
};

extern PyTypeObject PySGAnimation_Type;

// A new wrapper; null with an exception on failure.
PyObject* PySGAnimation_create(CSGAnimation* pAnimation);
