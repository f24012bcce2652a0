// Angles: files write degrees, we compute with radians.
#pragma once

#include <numbers>

constexpr double RADIANS_PER_DEGREE = std::numbers::pi / 180.0;
