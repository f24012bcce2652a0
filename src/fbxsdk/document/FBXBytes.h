// Numbers out of the bytes of a binary file. The machine is taken to be little-endian, like its vectors.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little);

// The bytes need no alignment; bBigEndian: the highest comes first.
template <class T>
T ReadFBXBytes(const char* pBytes, bool bBigEndian)
{
    const auto fnAs = [&](auto uiBits) {
        std::memcpy(&uiBits, pBytes, sizeof(T));
        if (bBigEndian)
        {
            if constexpr (sizeof(T) == 8)
            {
                uiBits = __builtin_bswap64(uiBits);
            }
            else if constexpr (sizeof(T) == 4)
            {
                uiBits = __builtin_bswap32(uiBits);
            }
            else if constexpr (sizeof(T) == 2)
            {
                uiBits = __builtin_bswap16(uiBits);
            }
        }
        return std::bit_cast<T>(uiBits);
    };
    if constexpr (sizeof(T) == 8)
    {
        return fnAs(uint64_t{});
    }
    else if constexpr (sizeof(T) == 4)
    {
        return fnAs(uint32_t{});
    }
    else if constexpr (sizeof(T) == 2)
    {
        return fnAs(uint16_t{});
    }
    else
    {
        return static_cast<T>(*pBytes);
    }
}
