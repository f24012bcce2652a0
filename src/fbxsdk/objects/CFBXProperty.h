// One property of an object: what a line of a Properties70 or Properties60 record says.
#pragma once

#include "fbxsdk/document/CFBXValue.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// Everything is borrowed from the object table (or from its document).
struct CFBXProperty
{
    std::string_view strName;  // "Lcl Translation", "3dsMax|Parameters|base"
    std::string_view strType;  // "Lcl Translation", "KString", "enum", ...
    std::string_view strLabel; // "Number", "Color", ...; empty in files before 7000
    std::string_view strFlags; // letters
    std::span<const CFBXValue> spanValues;

    bool IsUserDefined() const { return strFlags.find('U') != std::string_view::npos; }
    bool IsAnimatable() const { return strFlags.find('A') != std::string_view::npos; }

    // A value that is not there gives the default.
    int64_t GetInt64(size_t n, int64_t nDefault = 0) const
    {
        return n < spanValues.size() ? spanValues[n].GetInt64(nDefault) : nDefault;
    }
    double GetDouble(size_t n, double dDefault = 0) const
    {
        return n < spanValues.size() ? spanValues[n].GetDouble(dDefault) : dDefault;
    }
    std::string_view GetString(size_t n) const
    {
        return n < spanValues.size() ? spanValues[n].GetString() : std::string_view();
    }
};
