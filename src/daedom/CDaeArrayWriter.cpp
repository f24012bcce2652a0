// Fills an array of the COLLADA DOM from character data.
#include "daedom/CDaeArrayWriter.h"

#include "daedom/CDaeNumber.h"
#include "daedom/CDaeUri.h"

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace
{

// No number is written this long; a name or reference may be, and is still refused beyond it.
constexpr size_t MAX_TOKEN = 65536;

bool ParseToken(std::string_view strToken, bool& rValue) { return ParseDaeBool(strToken, rValue); }

template <std::floating_point T>
bool ParseToken(std::string_view strToken, T& rValue)
{
    return ParseDaeReal(strToken, rValue);
}

template <std::integral T>
bool ParseToken(std::string_view strToken, T& rValue)
{
    return ParseDaeInteger(strToken, rValue);
}

const char* FindSpace(const char* pBegin, const char* pEnd)
{
    return std::find_if(pBegin, pEnd, [](char c) { return IsDaeSpace(c); });
}

const char* SkipSpace(const char* pBegin, const char* pEnd)
{
    while (pBegin != pEnd && IsDaeSpace(*pBegin))
    {
        ++pBegin;
    }
    return pBegin;
}

// Adds the digits at p to the value, as many as there are.
const char* ReadDigits(const char* p, const char* pEnd, uint64_t& rValue)
{
    for (; p != pEnd && *p >= '0' && *p <= '9'; ++p)
    {
        rValue = rValue * 10 + static_cast<uint64_t>(*p - '0');
    }
    return p;
}

// The two ways in which nearly all numbers of a large array are written, read in place: plain digits, and
// digits with a point. Return the end of the token, or null when it is written otherwise, or may go on beyond
// the end.
template <std::integral T>
const char* ReadPlain(const char* p, const char* pEnd, T& rValue)
{
    uint64_t uiValue = 0;
    const char* pNext = ReadDigits(p, pEnd, uiValue);
    if (pNext == pEnd || pNext == p || pNext - p > std::numeric_limits<T>::digits10 || !IsDaeSpace(*pNext))
    {
        return nullptr;
    }
    rValue = static_cast<T>(uiValue);
    return pNext;
}

// Up to 15 digits are exact in a double, and so is their quotient by a power of ten up to 22 rounded once
// (W. D. Clinger, How to read floating point numbers accurately, 1990).
template <std::floating_point T>
const char* ReadPlain(const char* p, const char* pEnd, T& rValue)
{
    static constexpr double POWERS[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool bNegative = p != pEnd && *p == '-';
    uint64_t uiDigits = 0;
    const char* const pBegin = p + (bNegative ? 1 : 0);
    const char* const pPoint = ReadDigits(pBegin, pEnd, uiDigits);
    const char* pNext = pPoint;
    ptrdiff_t nDecimals = 0;
    if (pPoint != pEnd && *pPoint == '.')
    {
        pNext = ReadDigits(pPoint + 1, pEnd, uiDigits);
        nDecimals = pNext - pPoint - 1;
    }
    const ptrdiff_t nDigits = pPoint - pBegin + nDecimals;
    if (pNext == pEnd || nDigits == 0 || nDigits > 15 || !IsDaeSpace(*pNext))
    {
        return nullptr;
    }
    const double fValue = static_cast<double>(uiDigits) / POWERS[nDecimals];
    rValue = static_cast<T>(bNegative ? -fValue : fValue);
    return pNext;
}

const char* ReadPlain(const char*, const char*, bool&) { return nullptr; }

// How many values a text may hold: exact for a short one, of which a scene has many; never more than it can
// hold.
size_t EstimateCount(std::string_view strText)
{
    constexpr size_t SHORT = 512;
    if (strText.size() > SHORT)
    {
        return strText.size() / 8;
    }
    size_t nCount = 0;
    bool bSpace = true;
    for (char c : strText)
    {
        nCount += bSpace && !IsDaeSpace(c) ? 1 : 0;
        bSpace = IsDaeSpace(c);
    }
    return nCount;
}

} // namespace

void CDaeArrayWriter::Begin(daeArray& rArray, daeAtomicType& rType)
{
    m_pArray = &rArray;
    m_pType = &rType;
    m_strToken.clear();
    m_bEmpty = true;
    m_nHighDigit = -1;
    const auto nSize = static_cast<size_t>(rType.getSize());
    if (rArray.getElementSize() == 1 && nSize > 1)
    {
        // The DOM takes hexadecimal data for a list of integers and keeps it in an array of bytes.
        m_pfnScan = &CDaeArrayWriter::ScanHex;
        return;
    }
    switch (rType.getTypeEnum())
    {
    case daeAtomicType::FloatType:
    case daeAtomicType::DoubleType:
        m_pfnScan = nSize == sizeof(double) ? &CDaeArrayWriter::ScanNumbers<double>
                                            : &CDaeArrayWriter::ScanNumbers<float>;
        break;
    case daeAtomicType::ULongType:
        m_pfnScan = &CDaeArrayWriter::ScanNumbers<daeULong>;
        break;
    case daeAtomicType::LongType:
        m_pfnScan = &CDaeArrayWriter::ScanNumbers<daeLong>;
        break;
    case daeAtomicType::UIntType:
        m_pfnScan = &CDaeArrayWriter::ScanNumbers<daeUInt>;
        break;
    case daeAtomicType::IntType:
        m_pfnScan = &CDaeArrayWriter::ScanNumbers<daeInt>;
        break;
    case daeAtomicType::ShortType:
        m_pfnScan = &CDaeArrayWriter::ScanNumbers<daeShort>;
        break;
    case daeAtomicType::BoolType:
        m_pfnScan = &CDaeArrayWriter::ScanNumbers<daeBool>;
        break;
    default:
        m_pfnScan = &CDaeArrayWriter::ScanOthers;
        break;
    }
}

bool CDaeArrayWriter::Write(std::string_view strText)
{
    if (!m_strToken.empty())
    {
        const char* pEnd = strText.data() + strText.size();
        const char* pSpace = FindSpace(strText.data(), pEnd);
        const auto nTaken = static_cast<size_t>(pSpace - strText.data());
        if (m_strToken.size() + nTaken > MAX_TOKEN)
        {
            return false;
        }
        m_strToken.append(strText.data(), nTaken);
        if (pSpace == pEnd)
        {
            return true;
        }
        const std::string strWhole = std::move(m_strToken) + ' ';
        m_strToken.clear();
        if (!Scan(strWhole))
        {
            return false;
        }
        strText.remove_prefix(nTaken);
    }
    return Scan(strText);
}

bool CDaeArrayWriter::End()
{
    if (m_nHighDigit >= 0)
    {
        m_strToken = "an odd number of digits";
        return false;
    }
    const std::string strWhole = std::move(m_strToken) + ' ';
    m_strToken.clear();
    return Scan(strWhole) && (m_bEmpty || Resize(m_pArray->getCount()));
}

bool CDaeArrayWriter::Scan(std::string_view strText)
{
    const char* pEnd = strText.data() + strText.size();
    const char* p = SkipSpace(strText.data(), pEnd);
    if (p == pEnd)
    {
        return true;
    }
    if (m_bEmpty)
    {
        m_pArray->clear();
        m_bEmpty = false;
    }
    return (this->*m_pfnScan)({p, static_cast<size_t>(pEnd - p)});
}

template <class T>
bool CDaeArrayWriter::ScanNumbers(std::string_view strText)
{
    const char* p = strText.data();
    const char* const pEnd = p + strText.size();
    if (!Reserve(m_pArray->getCount() + EstimateCount(strText)))
    {
        return false;
    }
    size_t nCount = m_pArray->getCount();
    while (p != pEnd)
    {
        if (nCount == m_pArray->getCapacity())
        {
            CDaeArrayAccess::Count(*m_pArray) = nCount;
            if (!Reserve(nCount + 1))
            {
                return false;
            }
        }
        T& rValue = reinterpret_cast<T*>(m_pArray->getRaw(0))[nCount];
        const char* pNext = ReadPlain(p, pEnd, rValue);
        if (!pNext)
        {
            pNext = FindSpace(p, pEnd);
            const std::string_view strToken(p, static_cast<size_t>(pNext - p));
            if (pNext == pEnd || !ParseToken(strToken, rValue))
            {
                CDaeArrayAccess::Count(*m_pArray) = nCount;
                m_strToken = strToken.substr(0, MAX_TOKEN);
                return pNext == pEnd && strToken.size() <= MAX_TOKEN;
            }
        }
        ++nCount;
        p = SkipSpace(pNext, pEnd);
    }
    CDaeArrayAccess::Count(*m_pArray) = nCount;
    return true;
}

// Names, references and enumerations: these own memory, so the array itself makes them.
bool CDaeArrayWriter::ScanOthers(std::string_view strText)
{
    const char* p = strText.data();
    const char* const pEnd = p + strText.size();
    while (p != pEnd)
    {
        const char* pNext = FindSpace(p, pEnd);
        std::string strToken(p, pNext);
        if (pNext == pEnd || strToken.size() > MAX_TOKEN)
        {
            m_strToken = strToken.substr(0, MAX_TOKEN);
            return strToken.size() <= MAX_TOKEN;
        }
        const size_t nCount = m_pArray->getCount();
        m_pArray->setCount(nCount + 1);
        if (!m_pType->stringToMemory(strToken.data(), m_pArray->getRaw(nCount)))
        {
            m_strToken = strToken;
            return false;
        }
        p = SkipSpace(pNext, pEnd);
    }
    return true;
}

bool CDaeArrayWriter::ScanHex(std::string_view strText)
{
    size_t nCount = m_pArray->getCount();
    if (!Reserve(nCount + strText.size() / 2 + 1))
    {
        return false;
    }
    auto* pBytes = reinterpret_cast<unsigned char*>(m_pArray->getRaw(0));
    for (const char c : strText)
    {
        if (IsDaeSpace(c))
        {
            continue;
        }
        const int nDigit = GetHexValue(c);
        if (nDigit < 0)
        {
            m_strToken = std::string(1, c);
            return false;
        }
        if (m_nHighDigit < 0)
        {
            m_nHighDigit = nDigit;
            continue;
        }
        pBytes[nCount++] = static_cast<unsigned char>(m_nHighDigit * 16 + nDigit);
        CDaeArrayAccess::Count(*m_pArray) = nCount;
        m_nHighDigit = -1;
    }
    return true;
}

bool CDaeArrayWriter::Reserve(size_t nCount)
{
    const size_t nCapacity = m_pArray->getCapacity();
    return nCount <= nCapacity || Resize(std::max(nCount, nCapacity + nCapacity / 2));
}

// Only for arrays of numbers, which realloc may move: large ones it moves without touching them.
bool CDaeArrayWriter::Resize(size_t nCapacity)
{
    if (!IsOfNumbers() || nCapacity == m_pArray->getCapacity())
    {
        return true;
    }
    void* pData = std::realloc(CDaeArrayAccess::Data(*m_pArray), nCapacity * m_pArray->getElementSize());
    if (!pData)
    {
        m_strToken.clear();
        return false;
    }
    CDaeArrayAccess::Data(*m_pArray) = static_cast<daeMemoryRef>(pData);
    CDaeArrayAccess::Capacity(*m_pArray) = nCapacity;
    return true;
}
