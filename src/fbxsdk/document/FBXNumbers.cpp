// Reading the text of numbers.
#include "fbxsdk/document/FBXNumbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace
{

// What follows the '#' of Microsoft's forms: a word, then digits of the precision that was asked for.
bool ParseMicrosoftForm(std::string_view strText, double& rValue)
{
    const size_t nLetters = std::min(strText.find_first_of("0123456789"), strText.size());
    const std::string_view strWord = strText.substr(0, nLetters);
    const std::string_view strDigits = strText.substr(nLetters);
    if (strDigits.find_first_not_of("0123456789") != std::string_view::npos)
    {
        return false;
    }
    if (strWord == "INF")
    {
        rValue = std::numeric_limits<double>::infinity();
        return true;
    }
    rValue = std::numeric_limits<double>::quiet_NaN();
    return strWord == "IND" || strWord == "NAN" || strWord == "QNAN" || strWord == "SNAN";
}

} // namespace

bool ParseFBXNumber(std::string_view strText, SFBXNumber& rNumber)
{
    const char* pText = strText.data();
    const char* pEnd = pText + strText.size();
    if (pText != pEnd && *pText == '+')
    {
        ++pText; // from_chars takes no plus
        if (pText != pEnd && (*pText == '-' || *pText == '+'))
        {
            return false;
        }
    }
    std::from_chars_result objResult = std::from_chars(pText, pEnd, rNumber.nWhole);
    rNumber.bWhole = objResult.ec == std::errc() && objResult.ptr == pEnd;
    if (rNumber.bWhole)
    {
        return true;
    }
    objResult = std::from_chars(pText, pEnd, rNumber.dFloat);
    if (objResult.ec == std::errc::result_out_of_range)
    {
        // Nothing is said of which end it was: numbers too small have a negative exponent.
        const bool bSmall =
            std::string_view(pText, objResult.ptr).find_first_of("eE") != std::string_view::npos &&
            std::string_view(pText, objResult.ptr).find("e-") != std::string_view::npos;
        rNumber.dFloat = bSmall ? 0 : (*pText == '-' ? -HUGE_VAL : HUGE_VAL);
    }
    else if (objResult.ec != std::errc())
    {
        return false;
    }
    if (objResult.ptr != pEnd && *objResult.ptr == '#')
    {
        const bool bNegative = *pText == '-';
        double dValue = 0;
        if (!ParseMicrosoftForm({objResult.ptr + 1, pEnd}, dValue))
        {
            return false;
        }
        rNumber.dFloat = bNegative ? -dValue : dValue;
        return true;
    }
    return objResult.ptr == pEnd;
}
