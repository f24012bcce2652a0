// The pixels of an image file while it becomes a texture.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdscenegraph/texture/CSGPixelBuffer.h"

// What the image readers fill in.
struct CImage
{
    // A reader is handed the whole file. False, with the reason in a few words, where it refuses the file.
    using TRead = bool (*)(std::span<const uint8_t> arrFile, CImage& rImage, CQDString& rReason);

    // Takes the memory for all levels. uiMaxPixels is what the bytes of the file can expand to at the very
    // best: an image that claims more is refused.
    bool Allocate(PixelFormat eFormat, uint32_t uiWidth, uint32_t uiHeight, int32_t nLevels,
                  uint64_t uiMaxPixels, CQDString& rReason);

    size_t GetRowSize() const;
    // Of level 0; the top one is 0.
    uint8_t* EditRow(int32_t nRow) const;

    int32_t m_nWidth = 0;
    int32_t m_nHeight = 0;
    int32_t m_nLevels = 0;
    CSGPixelBufferPtr m_spPixels;
};
