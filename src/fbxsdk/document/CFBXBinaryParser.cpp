// Binary records. Every length is held against the bytes that are left in what encloses it.
#include "fbxsdk/document/CFBXBinaryParser.h"

#include "fbxsdk/document/CFBXArrayReader.h"
#include "fbxsdk/document/CFBXLog.h"
#include "fbxsdk/document/FBXBytes.h"
#include "fbxsdk/document/FBXMessages.h"
#include "qdcommon/CLog.h"

#include <utility>
#include <vector>

namespace
{

using namespace std::string_view_literals;

constexpr std::string_view MAGIC = "Kaydara FBX Binary"sv;
constexpr size_t HEAD_BYTES = 27;
constexpr size_t ORDER_PLACE = 22;
constexpr size_t VERSION_PLACE = 23;
constexpr int FIRST_WIDE_VERSION = 7500;
// A row of numbers at least so long is kept as it is in the file: one value instead of thousands.
constexpr uint64_t MIN_ROW = 32;

struct SType
{
    EFBXType eArray = EFBXType::NONE; // NONE: unknown
    size_t nBytes = 0;
};

constexpr SType GetRowType(char cType)
{
    switch (cType)
    {
    case 'D':
        return {EFBXType::DOUBLE_ARRAY, 8};
    case 'F':
        return {EFBXType::FLOAT_ARRAY, 4};
    case 'I':
        return {EFBXType::INT32_ARRAY, 4};
    case 'L':
        return {EFBXType::INT64_ARRAY, 8};
    default:
        return {};
    }
}

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

CQDString DescribeType(char cType)
{
    return cType > ' ' && cType < 127 ? CQDString("'") + cType + "'"
                                      : std::to_string(static_cast<unsigned char>(cType));
}

} // namespace

bool CFBXBinaryParser::IsBinary(std::string_view strBytes) { return strBytes.starts_with(MAGIC); }

CFBXBinaryParser::CFBXBinaryParser(std::string_view strBytes, CFBXRecordTree& rTree)
    : m_strBytes(strBytes),
      m_rTree(rTree)
{}

template <class T>
T CFBXBinaryParser::Get(size_t nPlace) const
{
    return ReadFBXBytes<T>(m_strBytes.data() + nPlace, m_bBigEndian);
}

bool CFBXBinaryParser::Fail(size_t nPlace, const CQDString& rText)
{
    m_strError = "byte " + std::to_string(nPlace) + ": " + rText;
    return false;
}

bool CFBXBinaryParser::Parse(CQDString& rError)
{
    const bool bParsed = ParseHead() && ParseRecords();
    rError = std::move(m_strError);
    return bParsed;
}

bool CFBXBinaryParser::ParseHead()
{
    if (m_strBytes.size() < HEAD_BYTES)
    {
        return Fail(m_strBytes.size(), "the file ends in its head");
    }
    m_bBigEndian = m_strBytes[ORDER_PLACE] == 1;
    const auto uiVersion = Get<uint32_t>(VERSION_PLACE);
    if (!IsKnownVersion(uiVersion))
    {
        return Fail(VERSION_PLACE, "binary FBX of the unknown version " + std::to_string(uiVersion));
    }
    m_nVersion = static_cast<int>(uiVersion);
    m_bWide = m_nVersion >= FIRST_WIDE_VERSION;
    m_nNext = HEAD_BYTES;
    return true;
}

bool CFBXBinaryParser::ParseRecords()
{
    std::vector<size_t> vecEnds{m_strBytes.size()}; // of the open records
    for (;;)
    {
        while (vecEnds.size() > 1 && m_nNext == vecEnds.back())
        {
            m_rTree.Close();
            vecEnds.pop_back();
        }
        if (vecEnds.size() == 1 && vecEnds.back() - m_nNext < GetHeadBytes())
        {
            Log(FBXSDK, LOG_WARNING,
                "The file ends without the record that closes it: something may be missing.");
            return true;
        }
        const size_t nPlace = m_nNext;
        SHead objHead;
        if (!ReadHead(objHead, vecEnds.back()))
        {
            return false;
        }
        if (objHead.IsNull())
        {
            if (vecEnds.size() == 1)
            {
                return true;
            }
            m_nNext = vecEnds.back();
            continue;
        }
        if (objHead.uiEnd < m_nNext || objHead.uiEnd > vecEnds.back())
        {
            return Fail(nPlace, "record " + QuoteFBXText(objHead.strName) + " says that it ends at byte " +
                                    std::to_string(objHead.uiEnd) +
                                    (objHead.uiEnd < m_nNext ? ", which is before its values"
                                                             : ", which is after what it is in"));
        }
        if (!m_rTree.Open(objHead.strName, nPlace, false))
        {
            return Fail(nPlace, "records are nested too deep or too many");
        }
        vecEnds.push_back(static_cast<size_t>(objHead.uiEnd));
        if (!ReadValues(objHead))
        {
            return false;
        }
    }
}

bool CFBXBinaryParser::ReadHead(SHead& rHead, size_t nLimit)
{
    const size_t nPlace = m_nNext;
    const size_t nBytes = GetHeadBytes();
    if (nLimit - m_nNext < nBytes)
    {
        return Fail(nPlace, "too few bytes for another record");
    }
    rHead.uiEnd = m_bWide ? Take<uint64_t>() : Take<uint32_t>();
    rHead.uiValues = m_bWide ? Take<uint64_t>() : Take<uint32_t>();
    rHead.uiValueBytes = m_bWide ? Take<uint64_t>() : Take<uint32_t>();
    const size_t nNameLength = Take<uint8_t>();
    if (nLimit - m_nNext < nNameLength)
    {
        return Fail(nPlace, "too few bytes for the name of a record");
    }
    rHead.strName = m_strBytes.substr(m_nNext, nNameLength);
    m_nNext += nNameLength;
    return true;
}

bool CFBXBinaryParser::ReadValues(const SHead& rHead)
{
    if (rHead.uiValueBytes > rHead.uiEnd - m_nNext)
    {
        return Fail(m_nNext,
                    "the values of record " + QuoteFBXText(rHead.strName) + " take more bytes than it has");
    }
    const size_t nEnd = m_nNext + static_cast<size_t>(rHead.uiValueBytes);
    if (!ReadRow(rHead, nEnd))
    {
        for (uint64_t uiValue = 0; uiValue < rHead.uiValues; ++uiValue)
        {
            if (!ReadValue(nEnd))
            {
                m_strError += " in record " + QuoteFBXText(rHead.strName);
                return false;
            }
        }
        if (m_nNext != nEnd && !std::exchange(m_bToldOfRest, true))
        {
            Log(FBXSDK, LOG_WARNING,
                "%s has bytes after its last value. They are ignored, here and elsewhere.",
                m_rTree.GetOpenRecord().Describe());
        }
    }
    m_nNext = nEnd;
    return true;
}

// A row of numbers of one type: false when it is something else.
bool CFBXBinaryParser::ReadRow(const SHead& rHead, size_t nEnd)
{
    if (rHead.uiValues < MIN_ROW || rHead.uiValueBytes == 0)
    {
        return false;
    }
    const char cType = m_strBytes[m_nNext];
    const SType objType = GetRowType(cType);
    const size_t nStride = objType.nBytes + 1;
    if (objType.nBytes == 0 || rHead.uiValueBytes / nStride != rHead.uiValues ||
        rHead.uiValueBytes % nStride != 0 || rHead.uiValues > UINT32_MAX || rHead.uiValueBytes > UINT32_MAX)
    {
        return false;
    }
    for (size_t nPlace = m_nNext; nPlace < nEnd; nPlace += nStride)
    {
        if (m_strBytes[nPlace] != cType)
        {
            return false;
        }
    }
    return m_rTree.AddValue(CFBXValue(objType.eArray, m_strBytes.substr(m_nNext, nEnd - m_nNext),
                                      {static_cast<uint32_t>(rHead.uiValues), false, m_bBigEndian, true}));
}

bool CFBXBinaryParser::ReadValue(size_t nEnd)
{
    const size_t nPlace = m_nNext;
    if (nPlace == nEnd)
    {
        return Fail(nPlace, "too few bytes for all values");
    }
    const char cType = m_strBytes[m_nNext++];
    const size_t nLeft = nEnd - m_nNext;
    const auto fnFits = [&](size_t nBytes) {
        return nBytes <= nLeft || Fail(nPlace, "too few bytes for a value of type " + DescribeType(cType));
    };
    switch (cType)
    {
    case 'B':
    case 'C':
        if (!fnFits(1))
        {
            return false;
        }
        ++m_nNext;
        if (const std::string_view strByte = m_strBytes.substr(m_nNext - 1, 1); IsLetter(strByte[0]))
        {
            return m_rTree.AddValue(CFBXValue(strByte));
        }
        return m_rTree.AddValue(CFBXValue(int64_t{Get<uint8_t>(m_nNext - 1)}));
    case 'Y':
        return fnFits(2) && m_rTree.AddValue(CFBXValue(int64_t{Take<int16_t>()}));
    case 'I':
        return fnFits(4) && m_rTree.AddValue(CFBXValue(int64_t{Take<int32_t>()}));
    case 'L':
        return fnFits(8) && m_rTree.AddValue(CFBXValue(Take<int64_t>()));
    case 'F':
        return fnFits(4) && m_rTree.AddValue(CFBXValue(double{Take<float>()}));
    case 'D':
        return fnFits(8) && m_rTree.AddValue(CFBXValue(Take<double>()));
    case 'S':
    case 'R':
    {
        if (!fnFits(4))
        {
            return false;
        }
        const auto uiLength = Take<uint32_t>();
        if (!fnFits(size_t{4} + uiLength))
        {
            return false;
        }
        m_nNext += uiLength;
        return m_rTree.AddValue(CFBXValue(cType == 'S' ? EFBXType::STRING : EFBXType::RAW,
                                          m_strBytes.substr(m_nNext - uiLength, uiLength)));
    }
    case 'd':
        return ReadArray(EFBXType::DOUBLE_ARRAY, nEnd);
    case 'f':
        return ReadArray(EFBXType::FLOAT_ARRAY, nEnd);
    case 'i':
        return ReadArray(EFBXType::INT32_ARRAY, nEnd);
    case 'l':
        return ReadArray(EFBXType::INT64_ARRAY, nEnd);
    case 'b':
    case 'c':
        return ReadArray(EFBXType::BYTE_ARRAY, nEnd);
    default:
        return Fail(nPlace, "unknown type " + DescribeType(cType) + " of a value");
    }
}

bool CFBXBinaryParser::ReadArray(EFBXType eType, size_t nEnd)
{
    const size_t nPlace = m_nNext - 1;
    if (nEnd - m_nNext < 12)
    {
        return Fail(nPlace, "too few bytes for the head of an array");
    }
    const auto uiCount = Take<uint32_t>();
    const auto uiEncoding = Take<uint32_t>();
    const auto uiBytes = Take<uint32_t>();
    if (uiEncoding > 1)
    {
        return Fail(nPlace, "unknown encoding " + std::to_string(uiEncoding) + " of an array");
    }
    // Some writers leave the length of what is not packed at 0.
    const size_t nBytes = uiEncoding == 1 ? uiBytes : uiCount * CFBXArrayReader::GetNumberSize(eType);
    if (nBytes > nEnd - m_nNext)
    {
        return Fail(nPlace, "an array says that it has " + std::to_string(nBytes) + " bytes, but only " +
                                std::to_string(nEnd - m_nNext) + " are left");
    }
    m_nNext += nBytes;
    return m_rTree.AddValue(CFBXValue(eType, m_strBytes.substr(m_nNext - nBytes, nBytes),
                                      {uiCount, uiEncoding == 1, m_bBigEndian, false,
                                       uiEncoding == 1 && !TakeFromBudget(eType, uiCount, nBytes)}));
}

// A few bytes can stand for a thousand times as many. Arrays of real files are mostly of numbers that are
// told from each other; even those of a flat grid have some seven numbers for each byte of the file.
bool CFBXBinaryParser::TakeFromBudget(EFBXType eType, uint32_t uiCount, size_t nBytes)
{
    constexpr size_t START = 1 << 18;
    constexpr size_t NUMBERS_PER_BYTE = 16;

    if (!CFBXArrayReader::MayHold(nBytes, uiCount, eType))
    {
        return true; // nobody will unpack it
    }
    m_nUnpacked += uiCount;
    return m_nUnpacked <= START + NUMBERS_PER_BYTE * m_strBytes.size();
}
