// Integers to and from decimal text, independent of the locale.
#pragma once

#include "qdcommon/CQDString.h"

#include <charconv>
#include <string_view>

class CInt
{
  public:
    static bool ToString(int nValue, CQDString& rText)
    {
        char arrText[16];
        const auto [pEnd, eError] = std::to_chars(arrText, arrText + sizeof(arrText), nValue);
        if (eError != std::errc())
        {
            return false;
        }
        rText.assign(arrText, pEnd);
        return true;
    }

    // The whole text must be one integer, white space around it aside; a leading '+' is accepted.
    static bool FromString(std::string_view strText, int& rValue)
    {
        constexpr std::string_view WHITE_SPACE = " \t\r\n";
        const size_t nBegin = strText.find_first_not_of(WHITE_SPACE);
        if (nBegin == std::string_view::npos)
        {
            return false;
        }
        strText = strText.substr(nBegin, strText.find_last_not_of(WHITE_SPACE) + 1 - nBegin);
        if (strText.size() > 1 && strText[0] == '+' && strText[1] != '-')
        {
            strText.remove_prefix(1);
        }
        const auto [pEnd, eError] = std::from_chars(strText.data(), strText.data() + strText.size(), rValue);
        return eError == std::errc() && pEnd == strText.data() + strText.size();
    }
};
