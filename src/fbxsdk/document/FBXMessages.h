// Names and texts of files in messages.
#pragma once

#include "qdcommon/CQDString.h"

#include <algorithm>
#include <string_view>

// In quotes, cut when it is long, with what would disturb a line of a log as '?'.
inline CQDString QuoteFBXText(std::string_view strText)
{
    constexpr size_t MAX_LENGTH = 60;
    CQDString strShown(strText.substr(0, MAX_LENGTH));
    std::ranges::replace_if(
        strShown, [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; }, '?');
    return "'" + strShown + (strText.size() > MAX_LENGTH ? "...'" : "'");
}
