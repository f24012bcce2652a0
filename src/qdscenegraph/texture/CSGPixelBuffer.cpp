#include "qdscenegraph/texture/CSGPixelBuffer.h"

#include "qdscenegraph/texture/CSGPixBuff_16bit.h"
#include "qdscenegraph/texture/CSGPixBuff_Bytes.h"
#include "qdscenegraph/texture/CSGPixBuff_PVR.h"

#include <limits>

namespace
{

const SGStreamableRegistration<CSGPixelBuffer> s_objRegistration(0x62D56BF4D107E2DC, 1, 3);

// Sizes in bytes are handed around as int32.
constexpr int64_t MAX_SIZE = std::numeric_limits<int32_t>::max();

CSGPixelBufferPtr ConstructFor(PixelFormat eFormat)
{
    switch (eFormat)
    {
    case PIXEL_FORMAT_R8G8B8:
        return CSGMem::Construct<CSGPixBuff_R8G8B8>();
    case PIXEL_FORMAT_A8R8G8B8:
        return CSGMem::Construct<CSGPixBuff_A8R8G8B8>();
    case PIXEL_FORMAT_R8G8B8A8:
        return CSGMem::Construct<CSGPixBuff_R8G8B8A8>();
    case PIXEL_FORMAT_L8:
        return CSGMem::Construct<CSGPixBuff_L8>();
    case PIXEL_FORMAT_A8B8G8R8:
        return CSGMem::Construct<CSGPixBuff_A8B8G8R8>();
    default:
        break;
    }
    if (PixelFormatIsCompressed(eFormat))
    {
        return CSGMem::Construct<CSGPixBuff_PVR>();
    }
    if (PixelFormatIs16bit(eFormat))
    {
        return CSGMem::Construct<CSGPixBuff_16bit>();
    }
    Log(QD_SCENEGRAPH, LOG_ERROR, "Unrecognized format %d", eFormat);
    return nullptr;
}

constexpr int64_t RoundUp(int64_t nValue, int64_t nMultiple)
{
    return (nValue + nMultiple - 1) / nMultiple * nMultiple;
}

} // namespace

CSGPixelBufferPtr CSGPixelBuffer::Create(PixelFormat eFormat, int32_t nNumPixels)
{
    const CSGPixelBufferPtr spBuffer = ConstructFor(eFormat);
    if (!spBuffer || !spBuffer->SetDescription(eFormat, nNumPixels, PixelFormatBitsPerPixel(eFormat)) ||
        !spBuffer->Allocate())
    {
        return nullptr;
    }
    std::ranges::fill(spBuffer->EditData(), uint8_t{0});
    return spBuffer;
}

bool CSGPixelBuffer::SetDescription(PixelFormat eFormat, int32_t nNumPixels, int32_t nBitsPerPixel)
{
    m_pData.reset();
    QD_CHECK(nNumPixels > 0, false);
    QD_CHECK_CALL(VerifyFormat(eFormat, nNumPixels), false);
    // Records that count whole bytes round the bits of compressed formats up.
    const int32_t nFormatBits = PixelFormatBitsPerPixel(eFormat);
    QD_CHECK(nBitsPerPixel == nFormatBits || nBitsPerPixel == RoundUp(nFormatBits, 8), false);
    m_eFormat = eFormat;
    m_nNumPixels = nNumPixels;
    m_nBitsPerPixel = nBitsPerPixel;
    QD_CHECK(CalcDataSize() <= MAX_SIZE, false);
    return true;
}

int64_t CSGPixelBuffer::CalcDataSize() const { return (int64_t{m_nNumPixels} * m_nBitsPerPixel + 7) / 8; }

bool CSGPixelBuffer::Allocate()
{
    const auto nSize = static_cast<size_t>(CalcDataSize());
    m_pData = {static_cast<uint8_t*>(CSGMem::GetPool().Alloc(nSize)), CFreeBlock{nSize}};
    QD_CHECK_NOT_NULL(m_pData, false);
    return true;
}

bool CSGPixelBuffer::VerifyPixel(int32_t nPixel) const
{
    QD_CHECK(nPixel >= 0, false);
    QD_CHECK(nPixel < GetNumPixels(), false);
    QD_CHECK_NOT_NULL(m_pData, false);
    return true;
}

const uint8_t* CSGPixelBuffer::GetDataPtrAtPixel(int32_t nPixel) const
{
    if (m_eFormat == PIXEL_FORMAT_NONE || PixelFormatIsCompressed(m_eFormat))
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Not supported for PixelFormat %d", m_eFormat);
        return nullptr;
    }
    QD_CHECK(nPixel >= 0, nullptr);
    QD_CHECK(nPixel < m_nNumPixels, nullptr);
    return m_pData.get() + static_cast<size_t>(nPixel) * static_cast<size_t>(m_nBitsPerPixel / 8);
}

bool CSGPixelBuffer::CalcLevelSize(PixelFormat eFormat, int32_t nWidth, int32_t nHeight, int32_t nLevel,
                                   int32_t nBitsPerPixel, int32_t& rLevelSize)
{
    rLevelSize = 0;
    int64_t w = nWidth;
    int64_t h = nHeight;
    if (nLevel > 0)
    {
        const int32_t nShift = std::min(nLevel, 31);
        w = std::max<int64_t>(w >> nShift, 1);
        h = std::max<int64_t>(h >> nShift, 1);
    }
    switch (eFormat)
    {
    case PIXEL_FORMAT_RGB_S3TC_DXT1:
    case PIXEL_FORMAT_RGBA_S3TC_DXT1:
    case PIXEL_FORMAT_RGBA_S3TC_DXT3:
    case PIXEL_FORMAT_RGBA_S3TC_DXT5:
    case PIXEL_FORMAT_BLOCK4X4:
        w = RoundUp(w, 4);
        h = RoundUp(h, 4);
        break;
    case PIXEL_FORMAT_RGB_PVRTC_2BPP:
    case PIXEL_FORMAT_RGBA_PVRTC_2BPP:
        w = std::max<int64_t>(w, 16);
        h = std::max<int64_t>(h, 8);
        break;
    case PIXEL_FORMAT_RGB_PVRTC_4BPP:
    case PIXEL_FORMAT_RGBA_PVRTC_4BPP:
        w = std::max<int64_t>(w, 8);
        h = std::max<int64_t>(h, 8);
        break;
    default:
        break;
    }
    // One limit after the other: the product of all three could leave 64 bits.
    if (w <= 0 || h <= 0 || nBitsPerPixel < 0 || w * h > MAX_SIZE * 8)
    {
        return false;
    }
    const int64_t nSize = (w * h * nBitsPerPixel + 7) / 8;
    if (nSize > MAX_SIZE)
    {
        return false;
    }
    rLevelSize = static_cast<int32_t>(nSize);
    return true;
}

void CSGPixelBuffer::OutputDebugInfo(const CQDString& rIndent) const
{
    Log(QD_SCENEGRAPH, LOG_INFO,
        "%sPixel Buffer - Format: %d - Num Pixels: %d - Bits Per Pixel: %d - Data: 0x%08llX", rIndent,
        m_eFormat, m_nNumPixels, m_nBitsPerPixel, LogAddress(m_pData.get()));
}
