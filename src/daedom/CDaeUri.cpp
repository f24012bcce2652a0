// The texts that go where the COLLADA DOM wants a URI.
#include "daedom/CDaeUri.h"

#include <filesystem>
#include <system_error>

namespace
{

constexpr std::string_view PLAIN = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
// RFC 3986: the delimiters, without the brackets, which are only allowed around an address.
constexpr std::string_view DELIMITERS = "!$&'()*+,;=:@?";

void AppendEscaped(std::string& rOutput, char c)
{
    constexpr std::string_view DIGITS = "0123456789ABCDEF";
    const auto ui = static_cast<unsigned char>(c);
    rOutput += {'%', DIGITS[ui >> 4], DIGITS[ui & 15]};
}

bool IsEscape(std::string_view strText, size_t n)
{
    return strText[n] == '%' && n + 2 < strText.size() && GetHexValue(strText[n + 1]) >= 0 &&
           GetHexValue(strText[n + 2]) >= 0;
}

} // namespace

int GetHexValue(char c)
{
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
}

std::string MakeDaeDocumentURI(const std::string& rFileName)
{
    std::error_code objError;
    std::string strPath = std::filesystem::absolute(rFileName, objError).lexically_normal().string();
    if (objError || strPath.empty())
    {
        strPath = "/" + rFileName;
    }
    std::string strURI = "file://";
    for (char c : strPath)
    {
        if (PLAIN.find(c) != std::string_view::npos)
        {
            strURI += c;
        }
        else
        {
            AppendEscaped(strURI, c);
        }
    }
    return strURI;
}

std::string GetDaeFilePath(const std::string& rName)
{
    for (const std::string_view strRoot : {"file:///", "file://localhost/"})
    {
        if (rName.starts_with(strRoot))
        {
            return DecodeDaeReference(std::string_view(rName).substr(strRoot.size() - 1));
        }
    }
    return rName;
}

std::string EncodeDaeReference(std::string_view strText)
{
    std::string strURI;
    strURI.reserve(strText.size());
    bool bFragment = false;
    for (size_t n = 0; n < strText.size(); ++n)
    {
        const char c = strText[n];
        if (c == '\\')
        {
            strURI += '/';
        }
        else if (PLAIN.find(c) != std::string_view::npos || DELIMITERS.find(c) != std::string_view::npos ||
                 IsEscape(strText, n) || (c == '#' && !bFragment))
        {
            strURI += c;
            bFragment |= c == '#';
        }
        else
        {
            AppendEscaped(strURI, c);
        }
    }
    return strURI;
}

std::string DecodeDaeReference(std::string_view strText)
{
    std::string strDecoded;
    strDecoded.reserve(strText.size());
    for (size_t n = 0; n < strText.size(); ++n)
    {
        if (IsEscape(strText, n))
        {
            strDecoded += static_cast<char>(GetHexValue(strText[n + 1]) * 16 + GetHexValue(strText[n + 2]));
            n += 2;
        }
        else
        {
            strDecoded += strText[n];
        }
    }
    return strDecoded;
}
