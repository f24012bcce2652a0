// Pixel buffers in files. The pixels are one zlib stream, cut into chunks of up to 1024 bytes, each behind
// its length.
#include "qdscenegraph/texture/CSGPixelBuffer.h"

#include "qdcommon/CStream.h"
#include "qdscenegraph/streaming/CSGStreamableLoadState.h"

#include <array>
#include <zlib.h>

namespace
{

// Records up to this version have the pixels as they are.
constexpr int32_t LAST_RAW_VERSION = 1;
// Records up to this version count whole bytes for each pixel, later ones bits.
constexpr int32_t LAST_BYTES_VERSION = 2;
constexpr int32_t LATEST_VERSION = 3;

constexpr uint32_t CHUNK_SIZE = 1024;
using CChunk = std::array<uint8_t, CHUNK_SIZE>;

// Deflate makes at least one byte of so many.
constexpr int64_t MAX_EXPANSION = 1032;

bool ReadChunk(CStream* pStream, CChunk& rChunk)
{
    QD_CHECK(pStream->CanRead(1, sizeof(uint32_t)), false);
    const uint32_t nLength = pStream->ReadUInt32();
    QD_CHECK(nLength > 0 && nLength <= CHUNK_SIZE, false);
    QD_CHECK(pStream->CanRead(nLength, 1), false);
    pStream->Read(rChunk.data(), nLength);
    return true;
}

bool InflateChunks(CStream* pStream, z_stream& rZlib)
{
    CChunk arrChunk{};
    int nErr = Z_OK;
    while (nErr != Z_STREAM_END)
    {
        if (!ReadChunk(pStream, arrChunk))
        {
            return false;
        }
        // Always a whole chunk: what follows the end of the zlib stream is not looked at.
        rZlib.next_in = arrChunk.data();
        rZlib.avail_in = CHUNK_SIZE;
        nErr = inflate(&rZlib, Z_NO_FLUSH);
        // Input that is left over while nothing is wrong waits for room in the pixels.
        if (rZlib.avail_out == 0 && (nErr == Z_BUF_ERROR || (nErr == Z_OK && rZlib.avail_in > 0)))
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Pixel buffer holds more data than its %llu bytes.",
                static_cast<unsigned long long>(rZlib.total_out));
            return false;
        }
        if (nErr != Z_OK && nErr != Z_STREAM_END)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Got error %d inflating pixel buffer.", nErr);
            return false;
        }
    }
    if (rZlib.avail_out != 0)
    {
        Log(QD_SCENEGRAPH, LOG_ERROR, "Pixel buffer data ends %u bytes short.", rZlib.avail_out);
        return false;
    }
    return true;
}

bool DeflateChunks(CStream* pStream, z_stream& rZlib)
{
    CChunk arrChunk;
    int nErr = Z_OK;
    while (nErr != Z_STREAM_END)
    {
        rZlib.next_out = arrChunk.data();
        rZlib.avail_out = CHUNK_SIZE;
        nErr = deflate(&rZlib, Z_FINISH);
        if (nErr != Z_OK && nErr != Z_STREAM_END)
        {
            Log(QD_SCENEGRAPH, LOG_ERROR, "Got error %d deflating pixel buffer.", nErr);
            return false;
        }
        const uint32_t nLength = CHUNK_SIZE - rZlib.avail_out;
        pStream->WriteUInt32(nLength);
        if (!pStream->Write(arrChunk.data(), nLength))
        {
            return false;
        }
    }
    return true;
}

bool ReadCompressed(CStream* pStream, std::span<uint8_t> arrData)
{
    z_stream objZlib{};
    int nErr = inflateInit(&objZlib);
    QD_CHECK(nErr == 0, false);
    objZlib.next_out = arrData.data();
    objZlib.avail_out = static_cast<uInt>(arrData.size());
    const bool bInflated = InflateChunks(pStream, objZlib);
    nErr = inflateEnd(&objZlib);
    QD_CHECK(nErr == 0, false);
    return bInflated;
}

bool WriteCompressed(CStream* pStream, std::span<uint8_t> arrData)
{
    z_stream objZlib{};
    int nErr = deflateInit(&objZlib, Z_BEST_SPEED);
    QD_CHECK(nErr == 0, false);
    objZlib.next_in = arrData.data();
    objZlib.avail_in = static_cast<uInt>(arrData.size());
    const bool bDeflated = DeflateChunks(pStream, objZlib);
    // Complains of a stream that was left unfinished, which has been reported then.
    nErr = deflateEnd(&objZlib);
    QD_CHECK(nErr == 0 || !bDeflated, false);
    return bDeflated;
}

} // namespace

bool CSGPixelBuffer::ReadFromStream(CStream* pStream, CSGStreamableLoadState* pLoadState)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_ARG(pLoadState, false);
    const int32_t nVersion = pLoadState->GetVersionBeingLoaded(CSGPixelBuffer::GetStaticSGStreamableType());
    const bool bKnown = nVersion >= 1 && nVersion <= LATEST_VERSION;
    if (!bKnown)
    {
        // Read like the latest all the same.
        Log(QD_SCENEGRAPH, LOG_ERROR, "Unknown stream version %d", nVersion);
    }
    const bool bRaw = bKnown && nVersion <= LAST_RAW_VERSION;
    const bool bWholeBytes = bKnown && nVersion <= LAST_BYTES_VERSION;
    QD_CHECK(pStream->CanRead(3, sizeof(int32_t)), false);
    const auto eFormat = static_cast<PixelFormat>(pStream->ReadInt32());
    const int32_t nNumPixels = pStream->ReadInt32();
    const int32_t nPixelSize = pStream->ReadInt32();
    QD_CHECK(nPixelSize > 0 && nPixelSize <= 32, false);
    QD_CHECK_CALL(SetDescription(eFormat, nNumPixels, bWholeBytes ? nPixelSize * 8 : nPixelSize), false);
    const int64_t nSize = CalcDataSize();
    QD_CHECK(pStream->CanRead(bRaw ? nSize : nSize / MAX_EXPANSION, 1), false);
    QD_CHECK_CALL(Allocate(), false);
    if (!bRaw)
    {
        return ReadCompressed(pStream, EditData());
    }
    pStream->Read(m_pData.get(), static_cast<size_t>(nSize));
    return true;
}

bool CSGPixelBuffer::WriteToStream(CStream* pStream, CSGStreamableSaveState*)
{
    QD_CHECK_ARG(pStream, false);
    QD_CHECK_NOT_NULL(m_pData, false);
    pStream->WriteInt32(m_eFormat);
    pStream->WriteInt32(m_nNumPixels);
    pStream->WriteInt32(m_nBitsPerPixel);
    return WriteCompressed(pStream, EditData());
}
