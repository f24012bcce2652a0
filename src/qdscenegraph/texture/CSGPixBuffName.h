// The class names of pixel buffers that hold one format only.
#pragma once

#include "qdscenegraph/texture/PixelFormat.h"

#include <algorithm>
#include <array>
#include <string_view>

// "CSGPixBuff_R8G8B8", zero-terminated.
template <PixelFormat FORMAT>
constexpr auto PIX_BUFF_NAME = [] {
    constexpr std::string_view PREFIX = "CSGPixBuff_";
    constexpr std::string_view FORMAT_NAME = PixelFormatName(FORMAT);
    std::array<char, PREFIX.size() + FORMAT_NAME.size() + 1> arrName{};
    std::ranges::copy(FORMAT_NAME, std::ranges::copy(PREFIX, arrName.begin()).out);
    return arrName;
}();
