// Binary FBX files written by hand, of any version and byte order:
//
//     CFBXTestFile objFile(7400);
//     objFile.Open("Objects").Open("Geometry", int64_t{1}, "Cube\0\1Geometry"sv, "Mesh");
//     objFile.Add("Vertices", std::vector<double>{0, 0, 0}).Close().Close();
//     const std::vector<uint8_t> vecBytes = objFile.Finish();
#pragma once

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

class CFBXTestFile
{
  public:
    // Values by type: char 'C', int16 'Y', int32 'I', int64 'L', float 'F', double 'D', text 'S', SRaw 'R';
    // vectors of numbers are arrays ('f', 'd', 'i', 'l', of bytes 'b'), before version 7000 as many single
    // values.
    struct SRaw
    {
        std::string strBytes;
    };

    explicit CFBXTestFile(int nVersion, bool bBigEndian = false, bool bDeflate = false)
        : m_nVersion(nVersion),
          m_bBigEndian(bBigEndian),
          m_bDeflate(bDeflate)
    {
        m_strBytes = std::string("Kaydara FBX Binary  \0\x1A", 22) + (bBigEndian ? '\1' : '\0');
        Put(static_cast<uint32_t>(nVersion));
    }

    template <class... VALUES>
    CFBXTestFile& Open(std::string_view strName, const VALUES&... rValues)
    {
        m_vecOpen.push_back(m_strBytes.size());
        m_strBytes.append(GetHeadBytes() - 1, '\0');
        m_strBytes += static_cast<char>(strName.size());
        m_strBytes += strName;
        const size_t nValues = m_strBytes.size();
        PatchSize(m_vecOpen.back() + GetSizeBytes(), (size_t{0} + ... + Value(rValues)));
        PatchSize(m_vecOpen.back() + 2 * GetSizeBytes(), m_strBytes.size() - nValues);
        m_bChildren = false;
        return *this;
    }
    CFBXTestFile& Close()
    {
        if (m_bChildren)
        {
            m_strBytes.append(GetHeadBytes(), '\0');
        }
        PatchSize(m_vecOpen.back(), m_strBytes.size());
        m_vecOpen.pop_back();
        m_bChildren = true;
        return *this;
    }
    template <class... VALUES>
    CFBXTestFile& Add(std::string_view strName, const VALUES&... rValues)
    {
        return Open(strName, rValues...).Close();
    }

    // Closes the top level; the footer, which readers do not look at, is shorter than a real one.
    std::vector<uint8_t> Finish()
    {
        m_strBytes.append(GetHeadBytes(), '\0');
        m_strBytes += "footer";
        return {m_strBytes.begin(), m_strBytes.end()};
    }

  private:
    size_t GetSizeBytes() const { return m_nVersion >= 7500 ? 8 : 4; }
    size_t GetHeadBytes() const { return 3 * GetSizeBytes() + 1; }

    template <class T>
    void AppendTo(std::string& rBytes, T tNumber) const
    {
        auto strNumber = std::string(reinterpret_cast<const char*>(&tNumber), sizeof(tNumber));
        if (m_bBigEndian)
        {
            std::ranges::reverse(strNumber);
        }
        rBytes += strNumber;
    }
    template <class T>
    void Put(T tNumber)
    {
        AppendTo(m_strBytes, tNumber);
    }
    void PatchSize(size_t nPlace, size_t nSize)
    {
        std::string strSize;
        m_nVersion >= 7500 ? AppendTo(strSize, uint64_t{nSize})
                           : AppendTo(strSize, static_cast<uint32_t>(nSize));
        m_strBytes.replace(nPlace, strSize.size(), strSize);
    }

    template <class T>
    static constexpr char LETTER = std::is_same_v<T, char>      ? 'C'
                                   : std::is_same_v<T, int16_t> ? 'Y'
                                   : std::is_same_v<T, int32_t> ? 'I'
                                   : std::is_same_v<T, int64_t> ? 'L'
                                   : std::is_same_v<T, float>   ? 'F'
                                                                : 'D';

    // Each gives the number of values that it wrote.
    template <class T>
    requires std::is_arithmetic_v<T> size_t Value(T tNumber)
    {
        m_strBytes += LETTER<T>;
        Put(tNumber);
        return 1;
    }
    size_t Value(std::string_view strText) { return Text('S', strText); }
    size_t Value(const SRaw& rRaw) { return Text('R', rRaw.strBytes); }
    size_t Text(char cType, std::string_view strBytes)
    {
        m_strBytes += cType;
        Put(static_cast<uint32_t>(strBytes.size()));
        m_strBytes += strBytes;
        return 1;
    }
    // Values of types that only a run knows, one after the other.
    template <class... T>
    size_t Value(const std::vector<std::variant<T...>>& rValues)
    {
        size_t nCount = 0;
        for (const auto& rAny : rValues)
        {
            nCount += std::visit([&](const auto& rValue) { return Value(rValue); }, rAny);
        }
        return nCount;
    }
    template <class T>
    size_t Value(const std::vector<T>& rNumbers)
    {
        if (m_nVersion < 7000)
        {
            std::ranges::for_each(rNumbers, [&](T tNumber) { Value(tNumber); });
            return rNumbers.size();
        }
        std::string strNumbers;
        std::ranges::for_each(rNumbers, [&](T tNumber) { AppendTo(strNumbers, tNumber); });
        if (m_bDeflate)
        {
            uLongf ulPacked = compressBound(static_cast<uLong>(strNumbers.size()));
            std::string strPacked(ulPacked, '\0');
            compress(reinterpret_cast<Bytef*>(strPacked.data()), &ulPacked,
                     reinterpret_cast<const Bytef*>(strNumbers.data()),
                     static_cast<uLong>(strNumbers.size()));
            strNumbers = strPacked.substr(0, ulPacked);
        }
        m_strBytes += std::is_same_v<T, char> ? 'b' : static_cast<char>(LETTER<T> + 'a' - 'A');
        Put(static_cast<uint32_t>(rNumbers.size()));
        Put(uint32_t{m_bDeflate});
        Put(static_cast<uint32_t>(strNumbers.size()));
        m_strBytes += strNumbers;
        return 1;
    }

    int m_nVersion;
    bool m_bBigEndian;
    bool m_bDeflate;
    bool m_bChildren = false; // the open record has some
    std::string m_strBytes;
    std::vector<size_t> m_vecOpen; // where the open records begin
};
