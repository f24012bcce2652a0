// Which part of an object an animation writes, and the target that writes it.
#pragma once

#include "qdscenegraph/target/CSGATF.h"

class CSGStreamable;

// The numbers stand in files.
enum ETarget : int32_t
{
    TARGET_ALL = 0,
    TARGET_X,
    TARGET_Y,
    TARGET_Z,
    TARGET_R,
    TARGET_G,
    TARGET_B,
    TARGET_A,
    TARGET_ANGLE, // radians
    TARGET_QUAT,  // x, y, z, w with w real
    TARGET_COUNT
};

class CSGATFTarget
{
  public:
    // The target for a part of a transform or of a parameter: all, X, Y or Z of a translation and of a scale;
    // the angle or the quaternion of a rotation; all of a matrix; all of a parameter, or one of its floats,
    // which are called X, Y, Z or R, G, B, A. Null (reported) when the object has no such part.
    static CSGATFPtr Create(CSGStreamable* pObject, ETarget eTarget);
    // "ALL", "X" and so on; "UNKNOWN" for a number that is none of a part.
    static const char* GetName(ETarget eTarget);
};
