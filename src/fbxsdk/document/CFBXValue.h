// One value of a record: a number, a text, raw bytes, or an array that stays as the file has it until it is
// asked for.
#pragma once

#include <cstdint>
#include <string_view>

enum class EFBXType : uint8_t
{
    NONE,   // what a record says of a value that it does not have
    INT,    // every whole number and byte of the file, 64 bits
    FLOAT,  // every float of the file, double
    STRING, // text; letters (flags of keys, 'T' and 'Y' for true) are texts of one letter, whatever the
            // encoding
    RAW,    // bytes
    FLOAT_ARRAY,
    DOUBLE_ARRAY,
    INT32_ARRAY,
    INT64_ARRAY,
    BYTE_ARRAY, // booleans and bytes
    TEXT_ARRAY  // numbers as an ASCII file writes them
};

// How the numbers of an array lie in the file.
struct SFBXArrayLayout
{
    uint32_t uiCount = 0;   // numbers
    bool bDeflated = false; // as one zlib stream
    bool bBigEndian = false;
    bool bTagged = false;  // each number after a byte that repeats the type
    bool bRefused = false; // the file's arrays up to here unpack to more than they may
};

// Texts, bytes and arrays are borrowed from the document, or from whoever made the value.
class CFBXValue
{
  public:
    constexpr CFBXValue() = default;
    constexpr CFBXValue(int64_t nValue) : m_eType(EFBXType::INT), m_nInt(nValue) {}
    constexpr CFBXValue(double dValue) : m_eType(EFBXType::FLOAT), m_dFloat(dValue) {}
    constexpr CFBXValue(std::string_view strValue) : CFBXValue(EFBXType::STRING, strValue) {}
    constexpr CFBXValue(EFBXType eType, std::string_view strBytes, SFBXArrayLayout objLayout = {})
        : m_eType(eType),
          m_objLayout(objLayout),
          m_uiBytes(static_cast<uint32_t>(strBytes.size())),
          m_pBytes(strBytes.data())
    {}

    EFBXType GetType() const { return m_eType; }
    bool IsNumber() const { return m_eType == EFBXType::INT || m_eType == EFBXType::FLOAT; }
    bool IsString() const { return m_eType == EFBXType::STRING; }
    bool IsArray() const { return m_eType >= EFBXType::FLOAT_ARRAY; }

    // Numbers become each other (a float is cut to whole, held within 64 bits; not a number: the default);
    // "T" and "Y" are 1, "F" and "N" are 0.
    int64_t GetInt64(int64_t nDefault = 0) const;
    double GetDouble(double dDefault = 0) const;
    // The text or the raw bytes; empty for anything else.
    std::string_view GetString() const
    {
        return m_eType == EFBXType::STRING || m_eType == EFBXType::RAW ? GetBytes() : std::string_view();
    }

    // Of an array, text or raw value: what the file holds of it.
    std::string_view GetBytes() const { return {m_pBytes, m_uiBytes}; }
    const SFBXArrayLayout& GetLayout() const { return m_objLayout; }

  private:
    EFBXType m_eType = EFBXType::NONE;
    SFBXArrayLayout m_objLayout;
    uint32_t m_uiBytes = 0;
    union
    {
        int64_t m_nInt = 0;
        double m_dFloat;
        const char* m_pBytes;
    };
};
