// What the reader and the writer of NEST files share. docs/nest-format.md describes the format.
#pragma once

#include <cstdint>

inline constexpr char NEST_SIGNATURE[4] = {'N', 'E', 'S', 'T'};

// File versions. They differ in the strings alone; the writer always writes the newest.
inline constexpr int32_t NEST_VERSION_UTF16_STRINGS = 1;
inline constexpr int32_t NEST_VERSION_8_BIT_STRINGS = 2;
