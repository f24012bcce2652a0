// Two floats: a texture coordinate or a pair of values.
#pragma once

struct CSGFloat2
{
    float x = 0.0f;
    float y = 0.0f;

    bool operator==(const CSGFloat2&) const = default;
};
