#include "qdsgloader_collada/CColladaConverter.h"

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDom.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>
#include <iterator>

CSGVertexFormat::EMember CColladaConverter::GetVertDataMember(std::string_view strSemantic)
{
    if (strSemantic == "POSITION")
    {
        return CSGVertexFormat::MEMBER_POSITION;
    }
    if (strSemantic == "NORMAL")
    {
        return CSGVertexFormat::MEMBER_NORMAL;
    }
    if (strSemantic == "TEXCOORD")
    {
        return CSGVertexFormat::MEMBER_TEXCOORD;
    }
    if (strSemantic == "COLOR")
    {
        return CSGVertexFormat::MEMBER_COLOR;
    }
    Log(QD_COLLADA, LOG_WARNING, "Unrecognized input semantic %s", CQDString(strSemantic));
    return CSGVertexFormat::MEMBER_NONE;
}

bool CColladaConverter::CheckNumFloats(std::span<const double> arrValues, size_t nExpected)
{
    if (arrValues.size() != nExpected)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in list of floats that had %d instead of %d values.",
            static_cast<int>(arrValues.size()), static_cast<int>(nExpected));
        return false;
    }
    return true;
}

bool CColladaConverter::GetTransform(std::span<const double> arrValues, CTransform3& rTransform)
{
    if (!CheckNumFloats(arrValues, 16))
    {
        return false;
    }
    CMatrix4 objMatrix;
    for (size_t nRow = 0; nRow < 4; ++nRow)
    {
        for (size_t nColumn = 0; nColumn < 4; ++nColumn)
        {
            objMatrix.m[nColumn][nRow] = static_cast<float>(arrValues[nRow * 4 + nColumn]);
        }
    }
    if (!CTransform3::FromMatrix4(objMatrix, rTransform))
    {
        Log(QD_COLLADA, LOG_ERROR, "Tried to get transform from matrix that wasn't an affine transform.");
        return false;
    }
    return true;
}

bool CColladaConverter::GetColor(std::span<const double> arrValues, CSGFloat4& rColor)
{
    if (arrValues.size() != 3 && arrValues.size() != 4)
    {
        Log(QD_COLLADA, LOG_ERROR, "Handed in DOM list of floats with %d values instead of 3 or 4.",
            static_cast<int>(arrValues.size()));
        return false;
    }
    rColor = {static_cast<float>(arrValues[0]), static_cast<float>(arrValues[1]),
              static_cast<float>(arrValues[2]),
              arrValues.size() == 4 ? static_cast<float>(arrValues[3]) : 1.0f};
    return true;
}

PixelFormat CColladaConverter::GetPixelFormat(std::string_view strFormat)
{
    if (strFormat == "A8R8G8B8")
    {
        return PIXEL_FORMAT_A8R8G8B8;
    }
    Log(QD_COLLADA, LOG_ERROR, "Unknown pixel format \"%s\"", CQDString(strFormat));
    return PIXEL_FORMAT_NONE;
}

void CColladaConverter::GetSamplerWrap(int32_t eWrap, CSGSamplerParams::EWrap& reWrap)
{
    switch (eWrap)
    {
    case FX_SAMPLER_WRAP_COMMON_NONE:
        reWrap = CSGSamplerParams::WRAP_NONE;
        break;
    case FX_SAMPLER_WRAP_COMMON_WRAP:
        reWrap = CSGSamplerParams::WRAP_REPEAT;
        break;
    case FX_SAMPLER_WRAP_COMMON_MIRROR:
        reWrap = CSGSamplerParams::WRAP_MIRROR;
        break;
    case FX_SAMPLER_WRAP_COMMON_CLAMP:
        reWrap = CSGSamplerParams::WRAP_CLAMP;
        break;
    case FX_SAMPLER_WRAP_COMMON_BORDER:
        reWrap = CSGSamplerParams::WRAP_BORDER;
        break;
    default:
        Log(QD_COLLADA, LOG_ERROR, "Unknown sampler wrap value %d", eWrap);
        break;
    }
}

void CColladaConverter::ConvertSamplerFilter(int32_t eFilter, CSGSamplerParams::EFilter& reFilter,
                                             CSGSamplerParams::EFilter& reMipFilter)
{
    using enum CSGSamplerParams::EFilter;
    static constexpr CSGSamplerParams::EFilter FILTERS[FX_SAMPLER_FILTER_COMMON_COUNT][2] = {
        {FILTER_NONE, FILTER_NONE},       // NONE
        {FILTER_NEAREST, FILTER_NONE},    // NEAREST
        {FILTER_LINEAR, FILTER_NONE},     // LINEAR
        {FILTER_NEAREST, FILTER_NEAREST}, // NEAREST_MIPMAP_NEAREST
        {FILTER_LINEAR, FILTER_NEAREST},  // LINEAR_MIPMAP_NEAREST
        {FILTER_NEAREST, FILTER_LINEAR},  // NEAREST_MIPMAP_LINEAR
        {FILTER_LINEAR, FILTER_LINEAR},   // LINEAR_MIPMAP_LINEAR
    };
    if (eFilter < 0 || eFilter >= FX_SAMPLER_FILTER_COMMON_COUNT)
    {
        Log(QD_COLLADA, LOG_ERROR, "Unknown sampler filter value %d", eFilter);
        return;
    }
    reFilter = FILTERS[eFilter][0];
    reMipFilter = FILTERS[eFilter][1];
}

bool CColladaConverter::GetInterpolationType(std::string_view strName, EColladaInterpolation& reInterpolation)
{
    struct CEntry
    {
        std::string_view strName;
        EColladaInterpolation eInterpolation;
    };
    static constexpr CEntry ENTRIES[] = {
        {"STEP", COLLADA_STEP},         {"LINEAR", COLLADA_LINEAR},   {"BEZIER", COLLADA_BEZIER},
        {"CARDINAL", COLLADA_CARDINAL}, {"HERMITE", COLLADA_HERMITE}, {"BSPLINE", COLLADA_BSPLINE},
    };
    const auto* pEntry = std::ranges::find(ENTRIES, strName, &CEntry::strName);
    if (pEntry == std::end(ENTRIES))
    {
        Log(QD_COLLADA, LOG_ERROR, "Unrecognized interpolation type %s", CQDString(strName));
        return false;
    }
    reInterpolation = pEntry->eInterpolation;
    return true;
}
