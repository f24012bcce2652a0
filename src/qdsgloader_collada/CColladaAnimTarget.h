// What a COLLADA channel animates, as the scene graph sees it.
#pragma once

#include "qdscenegraph/reference/CSGRefPath.h"

// What must be done to the values of a curve.
enum class EColladaValues
{
    Plain,
    Degrees, // become radians
    Matrix   // row by row for column vectors; the translation moves to where CSGATF_XFrmTransform3 has it
};

struct CColladaAnimTarget
{
    CSGRefPathPtr m_spRef; // null: there is none
    int32_t m_nOutputCount = 0;
    EColladaValues m_eValues = EColladaValues::Plain;
};
