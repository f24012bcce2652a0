// A colour: red, green, blue and opacity, each 1 at full; opaque black by default.
#pragma once

struct CColor
{
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 1.0f;

    bool operator==(const CColor&) const = default;
};
