// The meaning of COLLADA's words and numbers in the scene graph.
#pragma once

#include "qdcommon/CTransform3.h"
#include "qdscenegraph/geometry/CSGVertexFormat.h"

#include <span>
#include <string_view>

class CColladaConverter
{
  public:
    // The vertex member that an input of the semantic fills (compared exactly); MEMBER_NONE (reported) for
    // others.
    static CSGVertexFormat::EMember GetVertDataMember(std::string_view strSemantic);

    // A <matrix>: 16 values row by row, for column vectors. False (reported) for another number of them or a
    // matrix that is not affine.
    static bool GetTransform(std::span<const double> arrValues, CTransform3& rTransform);
    // Whether a list has as many values as its element must have (reported if not).
    static bool CheckNumFloats(std::span<const double> arrValues, size_t nExpected);
};
