// The COLLADA DOM's element classes, and the little that all our sources need on top of them. Heavy: for .cpp
// files only.
#pragma once

#include <dae.h>

#include <1.4/dom/domCOLLADA.h>

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <span>
#include <string_view>

using namespace ColladaDOM141;

// The values of an array in place.
template <class T>
std::span<const T> AsSpan(const daeTArray<T>& rArray)
{
    return {reinterpret_cast<const T*>(rArray.getRawData()), rArray.getCount()};
}

// An attribute's or element's text for messages and comparisons; absent texts are empty.
inline const char* Text(daeString szText) { return szText != nullptr ? szText : ""; }

// The first of several texts that is not empty; empty when all are.
inline const char* FirstText(std::initializer_list<daeString> arrTexts)
{
    for (const daeString szText : arrTexts)
    {
        if (*Text(szText) != '\0')
        {
            return szText;
        }
    }
    return "";
}

// Absent ids are empty.
inline const char* GetIDText(const daeElement& rElement) { return Text(rElement.getID()); }

// The number as our 32 bits hold it; -1 for what they do not hold. A negative number in a document wraps
// round in the DOM.
inline int32_t ToInt32(domUint uiValue)
{
    return uiValue <= static_cast<domUint>(std::numeric_limits<int32_t>::max())
               ? static_cast<int32_t>(uiValue)
               : -1;
}

inline int32_t CountOf(const daeArray& rArray) { return static_cast<int32_t>(rArray.getCount()); }
