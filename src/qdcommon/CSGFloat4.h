// Four floats; as a quaternion x, y and z are the imaginary parts and w the real one.
#pragma once

struct CSGFloat4
{
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 0.0f;

    bool operator==(const CSGFloat4&) const = default;
};
