// Reading the numbers of COLLADA text. Nothing here depends on the locale.
#pragma once

#include <charconv>
#include <concepts>
#include <string_view>
#include <type_traits>
#include <utility>

constexpr bool IsDaeSpace(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

// The text without the white space around it.
constexpr std::string_view TrimDaeSpace(std::string_view strText)
{
    while (!strText.empty() && IsDaeSpace(strText.front()))
    {
        strText.remove_prefix(1);
    }
    while (!strText.empty() && IsDaeSpace(strText.back()))
    {
        strText.remove_suffix(1);
    }
    return strText;
}

// Reads a whole token as a real number: what xs:double allows, and beyond it a leading '+', INF and NaN in
// any case, and the "1.#IND", "1.#QNAN" and "1.#INF" of older Microsoft runtimes. Values too large or too
// small for the type become infinite or zero, as the nearest value does. False, and the result untouched,
// when the token is something else.
bool ParseDaeReal(std::string_view strToken, double& rValue);
bool ParseDaeReal(std::string_view strToken, float& rValue);

// Reads "true", "false", "1" or "0".
bool ParseDaeBool(std::string_view strToken, bool& rValue);

// Reads a whole token as an integer of the type. Reals without a fraction ("3.0") are integers too. A
// negative number wraps round in an unsigned type: exporters write -1 for "none", and such an index is out of
// range for whoever uses it.
template <std::integral T>
bool ParseDaeInteger(std::string_view strToken, T& rValue)
{
    using TSigned = std::make_signed_t<T>;
    if (strToken.starts_with('+'))
    {
        strToken.remove_prefix(1);
    }
    const char* pEnd = strToken.data() + strToken.size();
    T value{};
    if (const auto result = std::from_chars(strToken.data(), pEnd, value);
        result.ec == std::errc() && result.ptr == pEnd)
    {
        rValue = value;
        return true;
    }
    TSigned negative{};
    if (const auto result = std::from_chars(strToken.data(), pEnd, negative);
        result.ec == std::errc() && result.ptr == pEnd)
    {
        rValue = static_cast<T>(negative);
        return true;
    }
    constexpr double LIMIT = 9007199254740992.0; // 2^53: every integer up to here is exact
    double fReal = 0;
    if (!ParseDaeReal(strToken, fReal) || !(fReal > -LIMIT && fReal < LIMIT))
    {
        return false;
    }
    const auto nWhole = static_cast<long long>(fReal);
    if (static_cast<double>(nWhole) != fReal || !std::in_range<TSigned>(nWhole))
    {
        return false;
    }
    rValue = static_cast<T>(nWhole);
    return true;
}
