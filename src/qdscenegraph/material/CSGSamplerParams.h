// How a sampler reads its surface.
#pragma once

#include "qdcommon/CColor.h"

#include <cstdint>
#include <type_traits>

class CStream;

// 72 bytes, saved as they stand: modes that a file brings need not be among those named here.
struct CSGSamplerParams
{
    enum EWrap : int32_t
    {
        WRAP_NONE = 0,
        WRAP_CLAMP = 1,
        WRAP_BORDER = 2,
        WRAP_REPEAT = 3,
        WRAP_MIRROR = 4
    };
    enum EFilter : int32_t
    {
        FILTER_NONE = 0,
        FILTER_LINEAR = 1,
        FILTER_NEAREST = 2,
        FILTER_ANISOTROPIC = 3
    };

    // The renderer's own, carried along unchanged.
    int32_t m_arrReserved[2] = {0, 0};
    CColor m_objReservedColor;

    EWrap m_eWrapS = WRAP_REPEAT;
    EWrap m_eWrapT = WRAP_REPEAT;
    EWrap m_eWrapP = WRAP_REPEAT;
    EFilter m_eMinFilter = FILTER_LINEAR;
    EFilter m_eMagFilter = FILTER_LINEAR;
    EFilter m_eMipFilter = FILTER_LINEAR;
    CColor m_objBorderColor;
    int32_t m_nMaxMipMapLevel = 1;
    float m_fMipMapBias = 0.0f; // added to the level of detail

    bool operator==(const CSGSamplerParams&) const = default;

    // False (reported) when the stream holds less, or does not take it.
    bool ReadFromStream(CStream* pStream);
    bool WriteToStream(CStream* pStream) const;

    // "none", "clamp", "border", "repeat", "mirror"; "unknown" for any other value.
    static const char* GetWrapName(EWrap eWrap);
    // "none", "linear", "nearest", "anisotropic"; "unknown" for any other value.
    static const char* GetFilterName(EFilter eFilter);
};
static_assert(sizeof(CSGSamplerParams) == 72 && std::is_trivially_copyable_v<CSGSamplerParams>);
