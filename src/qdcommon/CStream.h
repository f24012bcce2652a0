// The binary stream through which every saved object is written and read: little-endian numbers, raw blocks,
// strings.
#pragma once

#include "qdcommon/CQDCompactString.h"
#include "qdcommon/CQDString.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>

class CStream
{
  public:
    // How strings stand in the stream.
    enum EStringMode : int32_t
    {
        STRINGS_8_BIT = 0, // uint32 byte count, then the bytes
        STRINGS_UTF16 = 1  // uint32 count of 16-bit units, then the units; read only
    };

    CStream(const CStream&) = delete;
    CStream& operator=(const CStream&) = delete;

    virtual ~CStream();
    // The write position.
    virtual int64_t GetPosition() const;
    // Moves the read and the write position to an offset from the start.
    virtual void SetPosition(int32_t nOffset);
    virtual void SeekToEnd();
    virtual int64_t GetReadPosition() const;
    virtual int64_t GetWritePosition() const;
    // Prints a one-line description on the standard output.
    virtual void Dump() const;
    // The stream's memory, for kinds that have one; null otherwise.
    virtual const void* GetMemoryBlock() const;

    int32_t GetStringMode() const { return m_nStringMode; }
    void SetStringMode(int32_t nStringMode) { m_nStringMode = nStringMode; }

    // Bytes between the read position and the end: what a count read from the stream is held against.
    int64_t GetBytesLeft() const;
    bool CanRead(int64_t nCount, int64_t nBytesEach) const
    {
        return nCount >= 0 && nCount <= GetBytesLeft() / nBytesEach;
    }
    // True when the read position stands at the end. The stream stays usable.
    bool EndOfFile();

    // At the end of the stream only the first byte of the buffer is cleared, and the premature end is logged.
    // A block that the stream holds only a part of is filled with that part, the rest cleared.
    void Read(void* pBuffer, size_t nCount);
    // False when the bytes could not be written; IsGood remembers it.
    bool Write(const void* pBuffer, size_t nCount);
    // True as long as every write has succeeded.
    bool IsGood() const { return m_bGood; }

    void WriteInt32(int32_t nValue) { Write(&nValue, sizeof(nValue)); }
    void WriteUInt32(uint32_t uiValue) { Write(&uiValue, sizeof(uiValue)); }
    void WriteUInt64(uint64_t uiValue) { Write(&uiValue, sizeof(uiValue)); }
    void WriteFloat(float fValue) { Write(&fValue, sizeof(fValue)); }
    // 0 at the end of the stream.
    int32_t ReadInt32() { return ReadValue<int32_t>(); }
    uint32_t ReadUInt32() { return ReadValue<uint32_t>(); }
    int64_t ReadInt64() { return ReadValue<int64_t>(); }
    float ReadFloat() { return ReadValue<float>(); }

    // A null C string is written as the empty string.
    void WriteString(const char* szText);
    void WriteString(const CQDString& rText);
    void WriteString(const CQDCompactString& rText);
    // Zero-terminated UTF-8; null in an unknown string mode and when the count is more than the stream holds
    // (logged).
    std::unique_ptr<char[]> ReadString();
    // The empty string where the above is null. False when the stream does not hold the string whole, count
    // included (logged).
    bool ReadString(CQDString& rText);
    bool ReadString(CQDCompactString& rText);

  protected:
    CStream();
    // Takes the open byte stream; null when nothing could be opened.
    void SetBuffer(std::unique_ptr<std::streambuf> spBuffer);
    bool HasBuffer() const { return m_spBuffer != nullptr; }
    void CloseBuffer();

  private:
    template <class T>
    T ReadValue()
    {
        T value{};
        Read(&value, sizeof(value));
        return value;
    }
    void WriteText(const char* pChars, size_t nCount);
    // False, and the empty string, where ReadString is null.
    bool ReadText(CQDString& rText);

    std::unique_ptr<std::streambuf> m_spBuffer;
    int32_t m_nStringMode = STRINGS_8_BIT;
    bool m_bGood = true;
    // Reading and writing go on from one place, as in the file below. Kept here because asking the file costs
    // a system call each time.
    int64_t m_nPosition = 0;
    int64_t m_nSize = 0;
    CQDString m_strScratch; // names are read here first
};
