// The meaning of COLLADA's words and numbers in the scene graph.
#pragma once

#include "qdcommon/CSGFloat4.h"
#include "qdcommon/CTransform3.h"
#include "qdscenegraph/geometry/CSGVertexFormat.h"
#include "qdscenegraph/material/CSGSamplerParams.h"
#include "qdscenegraph/texture/PixelFormat.h"
#include "qdsgloader_collada/CColladaInterpolation.h"

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
    // Red, green, blue and, if there are four values, alpha. False (reported) for another number of values.
    static bool GetColor(std::span<const double> arrValues, CSGFloat4& rColor);

    // The format of a <surface>; PIXEL_FORMAT_NONE (reported) for an unknown one.
    static PixelFormat GetPixelFormat(std::string_view strFormat);
    // The DOM's enumerations of sampler modes, whose mode stays as it is (reported) for an unknown value. A
    // filter for minification says, too, how mip-maps are filtered.
    static void GetSamplerWrap(int32_t eWrap, CSGSamplerParams::EWrap& reWrap);
    static void ConvertSamplerFilter(int32_t eFilter, CSGSamplerParams::EFilter& reFilter,
                                     CSGSamplerParams::EFilter& reMipFilter);

    // What a name of an INTERPOLATION source means. False (reported) for an unknown one.
    static bool GetInterpolationType(std::string_view strName, EColladaInterpolation& reInterpolation);
};
