// Short rows of numbers: places, directions, angles in degrees, scale factors, colours.
#pragma once

#include <array>
#include <cstddef>

template <size_t COUNT>
struct FbxVectorTemplate
{
    std::array<double, COUNT> m_arrValues{};

    constexpr double& operator[](size_t n) { return m_arrValues[n]; }
    constexpr double operator[](size_t n) const { return m_arrValues[n]; }
    constexpr const double* data() const { return m_arrValues.data(); }
    constexpr bool operator==(const FbxVectorTemplate&) const = default;
};

template <size_t COUNT>
constexpr FbxVectorTemplate<COUNT> operator+(FbxVectorTemplate<COUNT> a, const FbxVectorTemplate<COUNT>& b)
{
    for (size_t n = 0; n < COUNT; ++n)
    {
        a[n] += b[n];
    }
    return a;
}

template <size_t COUNT>
constexpr FbxVectorTemplate<COUNT> operator-(FbxVectorTemplate<COUNT> a, const FbxVectorTemplate<COUNT>& b)
{
    for (size_t n = 0; n < COUNT; ++n)
    {
        a[n] -= b[n];
    }
    return a;
}

template <size_t COUNT>
constexpr FbxVectorTemplate<COUNT> operator*(FbxVectorTemplate<COUNT> a, double d)
{
    for (size_t n = 0; n < COUNT; ++n)
    {
        a[n] *= d;
    }
    return a;
}

using FbxDouble2 = FbxVectorTemplate<2>;
using FbxDouble3 = FbxVectorTemplate<3>;
using FbxDouble4 = FbxVectorTemplate<4>;
using FbxVector2 = FbxDouble2;
using FbxVector4 = FbxDouble4;
using FbxColor = FbxDouble4; // red, green, blue, alpha
