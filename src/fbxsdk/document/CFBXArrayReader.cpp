// Arrays: packed or not, in both byte orders, as text; into vectors of any number type.
#include "fbxsdk/document/CFBXArrayReader.h"

#include "fbxsdk/document/CFBXTextScanner.h"
#include "fbxsdk/document/FBXBytes.h"
#include "fbxsdk/document/FBXNumbers.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>

namespace
{

// Deflate cannot do better: 258 bytes for two bits.
constexpr size_t MAX_DEFLATE_RATIO = 1032;
// What real arrays stay below; memory for more is taken only as the numbers come.
constexpr size_t USUAL_DEFLATE_RATIO = 16;

struct SInflateEnd
{
    void operator()(z_stream* pStream) const { inflateEnd(pStream); }
};

// Unpacks nCount numbers into the vector.
template <class S>
bool Inflate(std::string_view strBytes, size_t nCount, std::vector<S>& rVector, CQDString& rError)
{
    if (nCount * sizeof(S) > (strBytes.size() + 1) * MAX_DEFLATE_RATIO)
    {
        rError = std::to_string(strBytes.size()) + " packed bytes cannot hold " + std::to_string(nCount) +
                 " numbers";
        return false;
    }
    z_stream objStream{};
    if (inflateInit(&objStream) != Z_OK)
    {
        rError = "zlib cannot start";
        return false;
    }
    const std::unique_ptr<z_stream, SInflateEnd> spStream(&objStream);
    objStream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(strBytes.data()));
    objStream.avail_in = static_cast<uInt>(strBytes.size());
    size_t nDone = 0;  // bytes
    Bytef byteMore[1]; // one more than there may be
    for (;;)
    {
        const size_t nWanted = nCount * sizeof(S) - nDone;
        if (nWanted > 0)
        {
            const size_t nNumbers = std::min(
                nCount, std::max(strBytes.size() * USUAL_DEFLATE_RATIO / sizeof(S), 4 * rVector.size()) + 1);
            rVector.resize(nNumbers);
            const size_t nRoom = nNumbers * sizeof(S) - nDone;
            objStream.next_out = reinterpret_cast<Bytef*>(rVector.data()) + nDone;
            objStream.avail_out =
                static_cast<uInt>(std::min<size_t>(nRoom, std::numeric_limits<uInt>::max()));
        }
        else
        {
            objStream.next_out = byteMore;
            objStream.avail_out = 1;
        }
        const uInt uiRoom = objStream.avail_out;
        const int nResult = inflate(&objStream, Z_NO_FLUSH);
        const size_t nGot = uiRoom - objStream.avail_out;
        if (nGot > 0 && nWanted == 0)
        {
            rError = "it has more than its " + std::to_string(nCount) + " numbers";
            return false;
        }
        nDone += nGot;
        if (nResult == Z_STREAM_END)
        {
            break;
        }
        if (nResult != Z_OK || (nGot == 0 && objStream.avail_in == 0))
        {
            rError = objStream.msg != nullptr ? objStream.msg : "its packed bytes end too early";
            return false;
        }
    }
    if (nDone != nCount * sizeof(S))
    {
        rError =
            "it has " + std::to_string(nDone / sizeof(S)) + " numbers instead of " + std::to_string(nCount);
        return false;
    }
    return true;
}

template <class S, class T>
void ConvertAll(const char* pNumbers, size_t nStride, bool bSwap, std::vector<T>& rVector)
{
    if (bSwap)
    {
        for (T& rNumber : rVector)
        {
            rNumber = ConvertFBXNumber<T>(ReadFBXBytes<S>(pNumbers, true));
            pNumbers += nStride;
        }
        return;
    }
    for (T& rNumber : rVector)
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
        ConvertAll<S>(strBytes.data() + nStride - sizeof(S), nStride, rLayout.bBigEndian, rVector);
        return true;
    }
    if constexpr (std::is_same_v<S, T>)
    {
        if (!Inflate(strBytes, nCount, rVector, rError))
        {
            return false;
        }
        if (rLayout.bBigEndian)
        {
            ConvertAll<S>(reinterpret_cast<const char*>(rVector.data()), sizeof(S), true, rVector);
        }
        return true;
    }
    else
    {
        std::vector<S> vecStored;
        if (!Inflate(strBytes, nCount, vecStored, rError))
        {
            return false;
        }
        rVector.resize(nCount);
        ConvertAll<S>(reinterpret_cast<const char*>(vecStored.data()), sizeof(S), rLayout.bBigEndian,
                      rVector);
        return true;
    }
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
