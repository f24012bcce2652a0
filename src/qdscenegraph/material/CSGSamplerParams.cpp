#include "qdscenegraph/material/CSGSamplerParams.h"

#include "qdcommon/CLogChecks.h"
#include "qdcommon/CStream.h"

#include <iterator>

namespace
{

constexpr const char* WRAP_NAMES[] = {"none", "clamp", "border", "repeat", "mirror"};
constexpr const char* FILTER_NAMES[] = {"none", "linear", "nearest", "anisotropic"};

template <size_t N>
const char* GetName(const char* const (&arrNames)[N], int32_t nValue)
{
    return nValue >= 0 && nValue < static_cast<int32_t>(N) ? arrNames[nValue] : "unknown";
}

} // namespace

bool CSGSamplerParams::ReadFromStream(CStream* pStream)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK(pStream->CanRead(1, sizeof(*this)), false);
    pStream->Read(this, sizeof(*this));
    return true;
}

bool CSGSamplerParams::WriteToStream(CStream* pStream) const
{
    QD_CHECK_ARG(pStream, false);
    return pStream->Write(this, sizeof(*this));
}

const char* CSGSamplerParams::GetWrapName(EWrap eWrap) { return GetName(WRAP_NAMES, eWrap); }

const char* CSGSamplerParams::GetFilterName(EFilter eFilter) { return GetName(FILTER_NAMES, eFilter); }
