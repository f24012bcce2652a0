// Three floats: a point, a direction or a triple of values.
#pragma once

struct CSGFloat3
{
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    bool operator==(const CSGFloat3&) const = default;
};

inline CSGFloat3 operator+(const CSGFloat3& a, const CSGFloat3& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline CSGFloat3 operator-(const CSGFloat3& a, const CSGFloat3& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline CSGFloat3 operator*(const CSGFloat3& v, float fFactor)
{
    return {v.x * fFactor, v.y * fFactor, v.z * fFactor};
}
