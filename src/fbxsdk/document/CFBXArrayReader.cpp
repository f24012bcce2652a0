// Arrays: packed or not, in both byte orders, as text; into vectors of any number type.
#include "fbxsdk/document/CFBXArrayReader.h"

#include "fbxsdk/document/CFBXTextScanner.h"
#include "fbxsdk/document/FBXBytes.h"
#include "fbxsdk/document/FBXNumbers.h"

#include <zlib.h>

#include <algorithm>
#include <new>
#include <span>
#include <type_traits>

namespace
{

// Deflate cannot do better: 258 bytes for two bits.
constexpr size_t MAX_DEFLATE_RATIO = 1032;
// What real arrays stay below.
constexpr size_t USUAL_DEFLATE_RATIO = 16;

// Packed bytes are unpacked in pieces that stay in the processor's cache until the numbers are where they
// belong.
constexpr size_t PIECE_BYTES = 1 << 18;

bool MayHoldBytes(size_t nPacked, size_t nBytes) { return nBytes <= (nPacked + 1) * MAX_DEFLATE_RATIO; }

// One zlib stream.
class CInflater
{
  public:
    explicit CInflater(std::string_view strBytes) : m_nResult(inflateInit(&m_objStream))
    {
        m_objStream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(strBytes.data()));
        m_objStream.avail_in = static_cast<uInt>(strBytes.size());
    }
    ~CInflater() { inflateEnd(&m_objStream); }
    CInflater(const CInflater&) = delete;
    CInflater& operator=(const CInflater&) = delete;

    bool HasEnded() const { return m_nResult == Z_STREAM_END; }
    CQDString DescribeFault() const
    {
        return m_nResult == Z_MEM_ERROR     ? "out of memory"
               : m_objStream.msg != nullptr ? m_objStream.msg
                                            : "its packed bytes end too early";
    }

    // The bytes that were unpacked: fewer than wanted where the stream ends or is damaged. Nothing more than
    // the end is expected after the last ones, which spares zlib to remember them.
    size_t Read(void* pTo, size_t nBytes, bool bLast)
    {
        m_objStream.next_out = static_cast<Bytef*>(pTo);
        m_objStream.avail_out = static_cast<uInt>(nBytes);
        m_nResult = m_nResult == Z_BUF_ERROR ? Z_OK : m_nResult; // there is room again
        while (m_nResult == Z_OK && m_objStream.avail_out > 0)
        {
            m_nResult = inflate(&m_objStream, bLast ? Z_FINISH : Z_NO_FLUSH);
        }
        return nBytes - m_objStream.avail_out;
    }

  private:
    z_stream m_objStream{};
    int m_nResult;
};

// Hands out nCount numbers: fnRoom(n) says where the next n of them go, fnTake(p, n) gets them there.
template <class S, class ROOM, class TAKE>
bool Inflate(std::string_view strBytes, size_t nCount, ROOM&& fnRoom, TAKE&& fnTake, CQDString& rError)
{
    if (!MayHoldBytes(strBytes.size(), nCount * sizeof(S)))
    {
        rError = std::to_string(strBytes.size()) + " packed bytes cannot hold " + std::to_string(nCount) +
                 " numbers";
        return false;
    }
    CInflater objInflater(strBytes);
    for (size_t nDone = 0; nDone < nCount;)
    {
        const size_t nNumbers = std::min(nCount - nDone, PIECE_BYTES / sizeof(S));
        S* const pRoom = fnRoom(nNumbers);
        const size_t nGot = objInflater.Read(pRoom, nNumbers * sizeof(S), nDone + nNumbers == nCount);
        if (nGot < nNumbers * sizeof(S))
        {
            rError = objInflater.HasEnded() ? "it has " + std::to_string(nDone + nGot / sizeof(S)) +
                                                  " numbers instead of " + std::to_string(nCount)
                                            : objInflater.DescribeFault();
            return false;
        }
        fnTake(pRoom, nNumbers);
        nDone += nNumbers;
    }
    char cMore = 0;
    if (!objInflater.HasEnded() && objInflater.Read(&cMore, 1, true) > 0)
    {
        rError = "it has more than its " + std::to_string(nCount) + " numbers";
        return false;
    }
    if (!objInflater.HasEnded())
    {
        rError = objInflater.DescribeFault();
        return false;
    }
    return true;
}

template <class S, class T>
void ConvertAll(const char* pNumbers, size_t nStride, bool bSwap, std::span<T> arrNumbers)
{
    if (bSwap)
    {
        for (T& rNumber : arrNumbers)
        {
            rNumber = ConvertFBXNumber<T>(ReadFBXBytes<S>(pNumbers, true));
            pNumbers += nStride;
        }
        return;
    }
    for (T& rNumber : arrNumbers)
    {
        rNumber = ConvertFBXNumber<T>(ReadFBXBytes<S>(pNumbers, false));
        pNumbers += nStride;
    }
}

template <class S, class T>
bool ReadBinary(const CFBXValue& rArray, std::vector<T>& rVector, CQDString& rError)
{
    const SFBXArrayLayout& rLayout = rArray.GetLayout();
    const std::string_view strBytes = rArray.GetBytes();
    const size_t nCount = rLayout.uiCount;
    if (!rLayout.bDeflated)
    {
        const size_t nStride = sizeof(S) + (rLayout.bTagged ? 1 : 0);
        if (strBytes.size() / nStride != nCount || strBytes.size() % nStride != 0)
        {
            rError =
                std::to_string(strBytes.size()) + " bytes are not " + std::to_string(nCount) + " numbers";
            return false;
        }
        rVector.resize(nCount);
        ConvertAll<S>(strBytes.data() + nStride - sizeof(S), nStride, rLayout.bBigEndian,
                      std::span<T>(rVector));
        return true;
    }
    if (rLayout.bRefused)
    {
        rError = "the arrays of the file unpack to more than a file of its size has";
        return false;
    }
    // What most arrays need; more is taken only as the numbers come.
    rVector.reserve(std::min(nCount, strBytes.size() * USUAL_DEFLATE_RATIO / sizeof(S) + 1));
    const auto Grow = [&rVector](size_t nNumbers) {
        rVector.resize(rVector.size() + nNumbers);
        return std::span<T>(rVector).last(nNumbers);
    };
    std::vector<S> vecPiece;
    const auto GetRoom = [&](size_t nNumbers) {
        if constexpr (std::is_same_v<S, T>)
        {
            return Grow(nNumbers).data();
        }
        else
        {
            vecPiece.resize(std::max(vecPiece.size(), nNumbers));
            return vecPiece.data();
        }
    };
    const auto Take = [&](S* pNumbers, size_t nNumbers) {
        const char* pBytes = reinterpret_cast<const char*>(pNumbers);
        if constexpr (!std::is_same_v<S, T>)
        {
            ConvertAll<S>(pBytes, sizeof(S), rLayout.bBigEndian, Grow(nNumbers));
        }
        else if (rLayout.bBigEndian)
        {
            ConvertAll<S>(pBytes, sizeof(S), true, std::span<T>(pNumbers, nNumbers));
        }
    };
    return Inflate<S>(strBytes, nCount, GetRoom, Take, rError);
}

template <class T>
bool ReadText(const CFBXValue& rArray, std::vector<T>& rVector, CQDString& rError)
{
    CFBXTextScanner objScanner(rArray.GetBytes());
    rVector.reserve(rArray.GetLayout().uiCount);
    for (std::string_view strWord = objScanner.ReadWord(); !strWord.empty(); strWord = objScanner.ReadWord())
    {
        SFBXNumber objNumber;
        if (!ParseFBXNumber(strWord, objNumber))
        {
            rError = "'" + CQDString(strWord) + "' is not a number";
            return false;
        }
        rVector.push_back(objNumber.bWhole ? ConvertFBXNumber<T>(objNumber.nWhole)
                                           : ConvertFBXNumber<T>(objNumber.dFloat));
    }
    return true;
}

template <class T>
bool ReadAny(const CFBXValue& rArray, std::vector<T>& rVector, CQDString& rError)
{
    switch (rArray.GetType())
    {
    case EFBXType::FLOAT_ARRAY:
        return ReadBinary<float>(rArray, rVector, rError);
    case EFBXType::DOUBLE_ARRAY:
        return ReadBinary<double>(rArray, rVector, rError);
    case EFBXType::INT32_ARRAY:
        return ReadBinary<int32_t>(rArray, rVector, rError);
    case EFBXType::INT64_ARRAY:
        return ReadBinary<int64_t>(rArray, rVector, rError);
    case EFBXType::BYTE_ARRAY:
        return ReadBinary<uint8_t>(rArray, rVector, rError);
    case EFBXType::TEXT_ARRAY:
        return ReadText(rArray, rVector, rError);
    default:
        rError = "it is not an array";
        return false;
    }
}

template <class T>
bool ReadOrClear(const CFBXValue& rArray, std::vector<T>& rVector, CQDString& rError)
{
    rVector.clear();
    try
    {
        if (ReadAny(rArray, rVector, rError))
        {
            return true;
        }
    }
    catch (const std::bad_alloc&)
    {
        rError = "out of memory";
    }
    rVector.clear();
    return false;
}

} // namespace

bool CFBXArrayReader::MayHold(size_t nPacked, size_t nCount, EFBXType eType)
{
    return MayHoldBytes(nPacked, nCount * GetNumberSize(eType));
}

size_t CFBXArrayReader::GetNumberSize(EFBXType eType)
{
    switch (eType)
    {
    case EFBXType::DOUBLE_ARRAY:
    case EFBXType::INT64_ARRAY:
        return 8;
    case EFBXType::FLOAT_ARRAY:
    case EFBXType::INT32_ARRAY:
        return 4;
    default:
        return 1;
    }
}

bool CFBXArrayReader::Read(const CFBXValue& rArray, std::vector<double>& rVector, CQDString& rError)
{
    return ReadOrClear(rArray, rVector, rError);
}

bool CFBXArrayReader::Read(const CFBXValue& rArray, std::vector<float>& rVector, CQDString& rError)
{
    return ReadOrClear(rArray, rVector, rError);
}

bool CFBXArrayReader::Read(const CFBXValue& rArray, std::vector<int32_t>& rVector, CQDString& rError)
{
    return ReadOrClear(rArray, rVector, rError);
}

bool CFBXArrayReader::Read(const CFBXValue& rArray, std::vector<int64_t>& rVector, CQDString& rError)
{
    return ReadOrClear(rArray, rVector, rError);
}
