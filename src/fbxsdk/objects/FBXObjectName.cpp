// Names of objects without their classes.
#include "fbxsdk/objects/FBXObjectName.h"

std::string_view CutFBXClass(std::string_view strFullName, std::string_view strClass, bool bASCII)
{
    constexpr std::string_view BINARY_SEPARATOR("\0\1", 2);
    constexpr std::string_view ASCII_SEPARATOR = "::";

    if (const size_t uiEnd = strFullName.find(BINARY_SEPARATOR); uiEnd != std::string_view::npos)
    {
        return strFullName.substr(0, uiEnd);
    }
    const size_t uiClass = strFullName.find(ASCII_SEPARATOR);
    // A deformer's class is written "SubDeformer", a curve's "AnimCurve": not what the record is called.
    if (uiClass != std::string_view::npos && (bASCII || strFullName.substr(0, uiClass) == strClass))
    {
        return strFullName.substr(uiClass + ASCII_SEPARATOR.size());
    }
    return strFullName;
}

std::string_view CutFBXClash(std::string_view strName)
{
    constexpr std::string_view MARK = "_ncl";
    constexpr std::string_view DIGITS = "0123456789";

    const size_t uiMark = strName.rfind(MARK);
    if (uiMark == std::string_view::npos)
    {
        return strName;
    }
    const std::string_view strNumbers = strName.substr(uiMark + MARK.size());
    const size_t uiBetween = strNumbers.find_first_not_of(DIGITS);
    const bool bClash = uiBetween != 0 && uiBetween < strNumbers.size() - 1 && strNumbers[uiBetween] == '_' &&
                        strNumbers.find_first_not_of(DIGITS, uiBetween + 1) == std::string_view::npos;
    return bClash ? strName.substr(0, uiMark) : strName;
}

std::string_view LimitFBXName(std::string_view strName, size_t uiMaxLength)
{
    if (strName.size() <= uiMaxLength)
    {
        return strName;
    }
    size_t uiEnd = uiMaxLength;
    while (uiEnd > 0 && (static_cast<unsigned char>(strName[uiEnd]) & 0xC0u) == 0x80u) // within a character
    {
        --uiEnd;
    }
    return strName.substr(0, uiEnd);
}
