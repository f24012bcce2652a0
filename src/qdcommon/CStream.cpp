#include "qdcommon/CStream.h"

#include "qdcommon/CLogChecks.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <streambuf>

static_assert(std::endian::native == std::endian::little, "numbers are written as they stand in memory");

namespace
{

void AppendUTF8(CQDString& rText, uint32_t uiCodePoint)
{
    const auto Put = [&rText](uint32_t uiByte) { rText += static_cast<char>(uiByte); };
    if (uiCodePoint < 0x80)
    {
        Put(uiCodePoint);
        return;
    }
    if (uiCodePoint < 0x800)
    {
        Put(0xC0 | (uiCodePoint >> 6));
    }
    else
    {
        if (uiCodePoint < 0x10000)
        {
            Put(0xE0 | (uiCodePoint >> 12));
        }
        else
        {
            Put(0xF0 | (uiCodePoint >> 18));
            Put(0x80 | ((uiCodePoint >> 12) & 0x3F));
        }
        Put(0x80 | ((uiCodePoint >> 6) & 0x3F));
    }
    Put(0x80 | (uiCodePoint & 0x3F));
}

// A surrogate without its other half becomes U+FFFD.
CQDString ToUTF8(const std::u16string& rUnits)
{
    CQDString strText;
    strText.reserve(rUnits.size());
    for (size_t n = 0; n < rUnits.size(); ++n)
    {
        uint32_t uiCodePoint = rUnits[n];
        if ((uiCodePoint & 0xF800) == 0xD800)
        {
            const bool bPair = (uiCodePoint & 0xFC00) == 0xD800 && n + 1 < rUnits.size() &&
                               (rUnits[n + 1] & 0xFC00) == 0xDC00;
            uiCodePoint = bPair ? 0x10000 + ((uiCodePoint & 0x3FF) << 10) + (rUnits[++n] & 0x3FFu) : 0xFFFD;
        }
        AppendUTF8(strText, uiCodePoint);
    }
    return strText;
}

} // namespace

CStream::CStream() = default;
CStream::~CStream() = default;

void CStream::SetBuffer(std::unique_ptr<std::streambuf> spBuffer)
{
    m_spBuffer = std::move(spBuffer);
    m_nPosition = m_nSize = 0;
    if (m_spBuffer)
    {
        m_nSize = std::max<int64_t>(m_spBuffer->pubseekoff(0, std::ios_base::end), 0);
        m_spBuffer->pubseekpos(0);
    }
}

void CStream::CloseBuffer()
{
    if (m_spBuffer && m_spBuffer->pubsync() != 0)
    {
        m_bGood = false;
    }
    m_spBuffer.reset();
}

int64_t CStream::GetPosition() const { return GetWritePosition(); }

int64_t CStream::GetReadPosition() const { return m_nPosition; }

int64_t CStream::GetWritePosition() const { return m_nPosition; }

void CStream::SetPosition(int32_t nOffset)
{
    if (m_spBuffer && m_spBuffer->pubseekpos(nOffset) != std::streampos(-1))
    {
        m_nPosition = nOffset;
    }
}

void CStream::SeekToEnd()
{
    if (m_spBuffer)
    {
        m_spBuffer->pubseekoff(0, std::ios_base::end);
        m_nPosition = m_nSize;
    }
}

void CStream::Dump() const
{
    std::printf("Serialized Object Stream - %lld bytes written\n", static_cast<long long>(GetPosition()));
}

const void* CStream::GetMemoryBlock() const { return nullptr; }

int64_t CStream::GetBytesLeft() const { return std::max<int64_t>(m_nSize - m_nPosition, 0); }

bool CStream::EndOfFile()
{
    using CTraits = std::streambuf::traits_type;
    return !m_spBuffer || CTraits::eq_int_type(m_spBuffer->sgetc(), CTraits::eof());
}

void CStream::Read(void* pBuffer, size_t nCount)
{
    if (nCount == 0)
    {
        return;
    }
    auto* pBytes = static_cast<char*>(pBuffer);
    if (EndOfFile())
    {
        pBytes[0] = 0;
        Log(QD_DEFAULT, LOG_ERROR, "CStream::Read found premature end of file trying to read %d bytes.",
            static_cast<int>(nCount));
        return;
    }
    const auto nRead = static_cast<size_t>(m_spBuffer->sgetn(pBytes, static_cast<std::streamsize>(nCount)));
    m_nPosition += static_cast<int64_t>(nRead);
    if (nRead < nCount)
    {
        std::memset(pBytes + nRead, 0, nCount - nRead);
    }
}

bool CStream::Write(const void* pBuffer, size_t nCount)
{
    const auto nSize = static_cast<std::streamsize>(nCount);
    if (!m_spBuffer || m_spBuffer->sputn(static_cast<const char*>(pBuffer), nSize) != nSize)
    {
        m_bGood = false;
        return false;
    }
    m_nPosition += nSize;
    m_nSize = std::max(m_nSize, m_nPosition);
    return true;
}

void CStream::WriteText(const char* pChars, size_t nCount)
{
    WriteUInt32(static_cast<uint32_t>(nCount));
    if (nCount > 0)
    {
        Write(pChars, nCount);
    }
}

void CStream::WriteString(const char* szText)
{
    WriteText(szText, szText != nullptr ? std::strlen(szText) : 0);
}

// A zero byte ends a string in memory as in the stream, whichever type holds it.
void CStream::WriteString(const CQDString& rText) { WriteString(rText.c_str()); }

void CStream::WriteString(const CQDCompactString& rText) { WriteString(rText.c_str()); }

bool CStream::ReadText(CQDString& rText)
{
    rText.clear();
    if (m_nStringMode != STRINGS_8_BIT && m_nStringMode != STRINGS_UTF16)
    {
        return false;
    }
    const size_t nUnitSize = m_nStringMode == STRINGS_UTF16 ? 2 : 1;
    const size_t nCount = ReadUInt32();
    if (!CanRead(static_cast<int64_t>(nCount), static_cast<int64_t>(nUnitSize)))
    {
        Log(QD_DEFAULT, LOG_ERROR,
            "String of %lld characters is longer than the %lld bytes left in the stream.",
            static_cast<long long>(nCount), static_cast<long long>(GetBytesLeft()));
        return false;
    }
    try
    {
        if (m_nStringMode == STRINGS_8_BIT)
        {
            rText.resize(nCount);
            Read(rText.data(), nCount);
        }
        else
        {
            std::u16string strUnits(nCount, u'\0');
            Read(strUnits.data(), 2 * nCount);
            rText = ToUTF8(strUnits);
        }
    }
    catch (const std::bad_alloc&)
    {
        QD_CHECK_FAILED("Creation of %s failed", "rText");
        return false;
    }
    rText.resize(std::strlen(rText.c_str())); // a zero ends a string
    return true;
}

std::unique_ptr<char[]> CStream::ReadString()
{
    CQDString strText;
    if (!ReadText(strText))
    {
        return nullptr;
    }
    std::unique_ptr<char[]> arrText(new (std::nothrow) char[strText.size() + 1]());
    QD_CHECK_CREATED(arrText, nullptr);
    std::memcpy(arrText.get(), strText.data(), strText.size());
    return arrText;
}

bool CStream::ReadString(CQDString& rText)
{
    const bool bHasCount = CanRead(1, sizeof(uint32_t));
    return ReadText(rText) && bHasCount;
}

bool CStream::ReadString(CQDCompactString& rText)
{
    const bool bRead = ReadString(m_strScratch);
    rText = CQDCompactString(m_strScratch);
    return bRead;
}
