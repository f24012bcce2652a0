// Reading the numbers of COLLADA text.
#include "daedom/CDaeNumber.h"

#include <algorithm>
#include <limits>

namespace
{

bool EqualsIgnoringCase(std::string_view strText, std::string_view strLower)
{
    return std::ranges::equal(strText, strLower, [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + ('a' - 'A')) : a) == b;
    });
}

// "1.#INF", "1.#IND00", "1.#QNAN0" and the like, the sign taken off; more zeros follow when a precision was
// asked for.
template <class T>
bool ParseMicrosoftSpecial(std::string_view strToken, T& rValue)
{
    if (!strToken.starts_with("1.#"))
    {
        return false;
    }
    std::string_view strName = strToken.substr(3);
    while (strName.ends_with('0'))
    {
        strName.remove_suffix(1);
    }
    if (strName == "INF")
    {
        rValue = std::numeric_limits<T>::infinity();
        return true;
    }
    if (strName == "IND" || strName == "QNAN" || strName == "SNAN" || strName == "NAN")
    {
        rValue = std::numeric_limits<T>::quiet_NaN();
        return true;
    }
    return false;
}

// Whether a well-written number that doesn't fit the type is too small for it, not too large.
bool IsTiny(std::string_view strToken)
{
    const size_t nExponent = strToken.find_first_of("eE");
    if (nExponent != std::string_view::npos)
    {
        return strToken.substr(nExponent + 1).starts_with('-');
    }
    return strToken.starts_with('0') || strToken.starts_with('.');
}

template <class T>
bool ParseReal(std::string_view strToken, T& rValue)
{
    const bool bNegative = strToken.starts_with('-');
    if (bNegative || strToken.starts_with('+'))
    {
        strToken.remove_prefix(1);
    }
    if (strToken.empty() || strToken.front() == '-' || strToken.front() == '+')
    {
        return false;
    }
    T value{};
    const char* pEnd = strToken.data() + strToken.size();
    const auto result = std::from_chars(strToken.data(), pEnd, value);
    if (result.ec == std::errc::result_out_of_range && result.ptr == pEnd)
    {
        value = IsTiny(strToken) ? T{0} : std::numeric_limits<T>::infinity();
    }
    else if ((result.ec != std::errc() || result.ptr != pEnd) && !ParseMicrosoftSpecial(strToken, value))
    {
        return false;
    }
    rValue = bNegative ? -value : value;
    return true;
}

} // namespace

bool ParseDaeReal(std::string_view strToken, double& rValue) { return ParseReal(strToken, rValue); }

bool ParseDaeReal(std::string_view strToken, float& rValue) { return ParseReal(strToken, rValue); }

bool ParseDaeBool(std::string_view strToken, bool& rValue)
{
    const bool bTrue = strToken == "1" || EqualsIgnoringCase(strToken, "true");
    if (!bTrue && strToken != "0" && !EqualsIgnoringCase(strToken, "false"))
    {
        return false;
    }
    rValue = bTrue;
    return true;
}
