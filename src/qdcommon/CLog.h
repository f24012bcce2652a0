// Logging a message: Log(SOURCE, LOG_ERROR, "Failed to load file %s.", strFilename).
//
// The format is printf's, checked against the arguments while compiling. Strings of every kind go to %s,
// addresses go through LogAddress to a "0x%08llX" or "0x%08llx". Function, file and line of the caller are
// taken by themselves.
#pragma once

#include "qdcommon/CLogSource.h"

#include <concepts>
#include <cstdint>
#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>

// Where a message was logged. The function is its class-qualified name, without return type and arguments.
struct CLogSite
{
    std::string_view strFunction;
    const char* szFile; // the file's name without directories
    int nLine;
};

// Cuts "bool CSGNestReader::LoadFile(const CQDString&)" to "CSGNestReader::LoadFile".
constexpr std::string_view CutFunctionName(std::string_view strPretty)
{
    constexpr std::string_view ANONYMOUS = "{anonymous}::";
    size_t nEnd = strPretty.find('(');
    if (nEnd == std::string_view::npos)
    {
        nEnd = strPretty.size();
    }
    size_t nBegin = nEnd;
    int nDepth = 0;
    while (nBegin > 0 && (nDepth > 0 || strPretty[nBegin - 1] != ' '))
    {
        const char c = strPretty[nBegin - 1];
        nDepth += (c == '>') ? 1 : (c == '<') ? -1 : 0;
        --nBegin;
    }
    while (nBegin < nEnd && (strPretty[nBegin] == '*' || strPretty[nBegin] == '&'))
    {
        ++nBegin;
    }
    std::string_view strName = strPretty.substr(nBegin, nEnd - nBegin);
    if (strName.starts_with(ANONYMOUS))
    {
        strName.remove_prefix(ANONYMOUS.size());
    }
    return strName;
}

constexpr CLogSite MakeLogSite(const std::source_location& objLocation)
{
    const char* szFile = objLocation.file_name();
    for (const char* sz = szFile; *sz != '\0'; ++sz)
    {
        if (*sz == '/')
        {
            szFile = sz + 1;
        }
    }
    return {CutFunctionName(objLocation.function_name()), szFile, static_cast<int>(objLocation.line())};
}

// An object's address as a number for "0x%08llX".
inline unsigned long long LogAddress(const volatile void* pObject)
{
    return static_cast<unsigned long long>(reinterpret_cast<uintptr_t>(pObject));
}

namespace LogDetail
{

template <class T>
concept CStringLike = requires(const T& rText)
{
    {
        rText.c_str()
        } -> std::convertible_to<const char*>;
};

// What printf is handed for an argument.
template <class T>
auto ToPrintf(const T& rValue)
{
    if constexpr (CStringLike<T>)
    {
        return static_cast<const char*>(rValue.c_str());
    }
    else if constexpr (std::is_convertible_v<const T&, const char*>)
    {
        return static_cast<const char*>(rValue);
    }
    else
    {
        static_assert(std::is_arithmetic_v<T> || std::is_enum_v<T>, "this type cannot be logged");
        if constexpr (std::is_floating_point_v<T>)
        {
            return static_cast<double>(rValue);
        }
        else if constexpr (std::is_enum_v<T>)
        {
            return static_cast<int>(rValue);
        }
        else
        {
            return +rValue;
        }
    }
}

enum class EKind
{
    Text,
    Double,
    Int,  // 32 bits, %d %u %x
    Int64 // 64 bits, %lld %llu %llx
};

template <class T>
constexpr EKind KindOf()
{
    if constexpr (std::is_pointer_v<T>)
    {
        return EKind::Text;
    }
    else if constexpr (std::is_same_v<T, double>)
    {
        return EKind::Double;
    }
    else
    {
        return sizeof(T) == 8 ? EKind::Int64 : EKind::Int;
    }
}

// Stops the compilation when a format and its arguments disagree.
void FormatDoesNotMatchArguments();

constexpr void CheckFormat(std::string_view strFormat, const EKind* arrKinds, size_t nKinds)
{
    size_t nUsed = 0;
    for (size_t n = 0; n < strFormat.size(); ++n)
    {
        if (strFormat[n] != '%')
        {
            continue;
        }
        ++n;
        if (n < strFormat.size() && strFormat[n] == '%')
        {
            continue;
        }
        while (n < strFormat.size() &&
               std::string_view("-+ #0123456789.").find(strFormat[n]) != std::string_view::npos)
        {
            ++n;
        }
        size_t nLongs = 0;
        for (; n < strFormat.size() && strFormat[n] == 'l'; ++n)
        {
            ++nLongs;
        }
        const char c = n < strFormat.size() ? strFormat[n] : '\0';
        const EKind eWanted = c == 's'                                                      ? EKind::Text
                              : (c == 'f' || c == 'g' || c == 'e')                          ? EKind::Double
                              : std::string_view("diuxX").find(c) == std::string_view::npos ? EKind(-1)
                              : nLongs == 2                                                 ? EKind::Int64
                                                                                            : EKind::Int;
        if (nUsed == nKinds || arrKinds[nUsed] != eWanted || nLongs == 1)
        {
            FormatDoesNotMatchArguments();
        }
        ++nUsed;
    }
    if (nUsed != nKinds)
    {
        FormatDoesNotMatchArguments();
    }
}

template <class T>
using TPrintf = decltype(ToPrintf(std::declval<const std::decay_t<T>&>()));

} // namespace LogDetail

// A format text with the place it stands at; made by itself from a string literal.
template <class... Args>
class CLogText
{
  public:
    consteval CLogText(const char* szFormat,
                       std::source_location objLocation = std::source_location::current())
        : m_szFormat(szFormat),
          m_objSite(MakeLogSite(objLocation))
    {
        constexpr LogDetail::EKind arrKinds[] = {LogDetail::KindOf<LogDetail::TPrintf<Args>>()...,
                                                 LogDetail::EKind::Int};
        LogDetail::CheckFormat(szFormat, arrKinds, sizeof...(Args));
    }

    const char* GetFormat() const { return m_szFormat; }
    const CLogSite& GetSite() const { return m_objSite; }

  private:
    const char* m_szFormat;
    CLogSite m_objSite;
};

// Formats and hands one line to the installed outputs; the caller has tested the source's threshold.
void LogFormatted(int nLevel, const CLogSite& rSite, const char* szFormat, ...)
    __attribute__((format(printf, 3, 4)));
// The same with the message's text made already.
void LogMessage(int nLevel, const CLogSite& rSite, std::string_view strMessage);

template <class... Args>
void Log(const CLogSource& rSource, int nLevel, CLogText<std::type_identity_t<Args>...> objText,
         const Args&... rArgs)
{
    if (rSource.Accepts(nLevel))
    {
        LogFormatted(nLevel, objText.GetSite(), objText.GetFormat(), LogDetail::ToPrintf(rArgs)...);
    }
}
