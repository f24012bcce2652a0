// Numbers of FBX files: their conversion and their text.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

// A number in another type: a float is cut to whole, what is out of range becomes the end of the range, and
// not a number becomes 0 where the type has no such thing.
template <class T, class S>
T ConvertFBXNumber(S tNumber)
{
    if constexpr (std::is_floating_point_v<T> || (std::is_integral_v<S> && sizeof(S) <= sizeof(T)))
    {
        return static_cast<T>(tNumber);
    }
    else
    {
        using CLimits = std::numeric_limits<T>;
        if constexpr (std::is_floating_point_v<S>)
        {
            if (!(tNumber == tNumber))
            {
                return 0;
            }
            // The greatest whole number itself may not be a float; one more is.
            constexpr double END = -static_cast<double>(CLimits::min());
            return static_cast<double>(tNumber) >= END    ? CLimits::max()
                   : static_cast<double>(tNumber) <= -END ? CLimits::min()
                                                          : static_cast<T>(tNumber);
        }
        else
        {
            return tNumber > CLimits::max()   ? CLimits::max()
                   : tNumber < CLimits::min() ? CLimits::min()
                                              : static_cast<T>(tNumber);
        }
    }
}

// A number as ASCII files have it.
struct SFBXNumber
{
    bool bWhole = false; // it is in nWhole, else in dFloat
    int64_t nWhole = 0;
    double dFloat = 0;
};

// The whole text is one number: digits with point and exponent, "inf", "nan(...)", or infinity and not a
// number as printf of older Microsoft libraries writes them ("1.#INF", "-1.#IND00"). False for anything else.
bool ParseFBXNumber(std::string_view strText, SFBXNumber& rNumber);
