// Binary FBX files written by hand, of any version and byte order:
//
//     CFBXTestFile objFile(7400);
//     objFile.Open("Objects").Open("Geometry", int64_t{1}, "Cube\0\1Geometry"sv, "Mesh");
//     objFile.Add("Vertices", std::vector<double>{0, 0, 0}).Close().Close();
//     const std::vector<uint8_t> vecBytes = objFile.Finish();
#pragma once

#include "fbxsdk/document/CFBXRecord.h"

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
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
        const size_t nValues = Begin(strName);
        EndValues(nValues, (size_t{0} + ... + Value(rValues)));
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

    // A record of another file, with all inside of it.
    CFBXTestFile& Copy(const CFBXRecord& rRecord)
    {
        const size_t nValues = Begin(rRecord.GetName());
        size_t nCount = 0;
        for (const CFBXValue& rValue : rRecord.GetValues())
        {
            std::vector<double> vecNumbers;
            if (rValue.IsArray())
            {
                rRecord.ReadDoubles(vecNumbers);
            }
            nCount += rValue.IsArray()                      ? CopyArray(rRecord, vecNumbers)
                      : rValue.GetType() == EFBXType::INT   ? Value(rValue.GetInt64())
                      : rValue.GetType() == EFBXType::FLOAT ? Value(rValue.GetDouble())
                                                            : Value(ToBinaryName(rValue.GetString()));
        }
        EndValues(nValues, nCount);
        for (const CFBXRecord& rChild : rRecord.GetChildren())
        {
            Copy(rChild);
        }
        return Close();
    }

    // Closes the top level; the footer, which readers do not look at, is shorter than a real one.
    std::vector<uint8_t> Finish()
    {
        m_strBytes.append(GetHeadBytes(), '\0');
        m_strBytes += "footer";
        return {m_strBytes.begin(), m_strBytes.end()};
    }

  private:
    // Where the values begin.
    size_t Begin(std::string_view strName)
    {
        m_vecOpen.push_back(m_strBytes.size());
        m_strBytes.append(GetHeadBytes() - 1, '\0');
        m_strBytes += static_cast<char>(strName.size());
        m_strBytes += strName;
        return m_strBytes.size();
    }
    void EndValues(size_t nValues, size_t nCount)
    {
        PatchSize(m_vecOpen.back() + GetSizeBytes(), nCount);
        PatchSize(m_vecOpen.back() + 2 * GetSizeBytes(), m_strBytes.size() - nValues);
        m_bChildren = false;
    }
    size_t CopyArray(const CFBXRecord& rRecord, const std::vector<double>& rNumbers)
    {
        if (std::ranges::any_of(rNumbers, [](double d) { return d != std::floor(d); }))
        {
            return Value(rNumbers);
        }
        std::vector<int64_t> vecWhole;
        rRecord.ReadInt64s(vecWhole);
        return Value(vecWhole);
    }
    // "Class::Name" of an ASCII file.
    static std::string ToBinaryName(std::string_view strText)
    {
        const size_t nColons = strText.find("::");
        return nColons == std::string_view::npos
                   ? std::string(strText)
                   : std::string(strText.substr(nColons + 2)) + std::string("\0\1", 2) +
                         std::string(strText.substr(0, nColons));
    }

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

    // Each gives the number of values that it wrote.
    template <class T>
    size_t Number(char cType, T tNumber)
    {
        m_strBytes += cType;
        Put(tNumber);
        return 1;
    }
    size_t Value(char cValue) { return Number('C', cValue); }
    size_t Value(int16_t nValue) { return Number('Y', nValue); }
    size_t Value(int32_t nValue) { return Number('I', nValue); }
    size_t Value(int64_t nValue) { return Number('L', nValue); }
    size_t Value(float fValue) { return Number('F', fValue); }
    size_t Value(double dValue) { return Number('D', dValue); }
    size_t Text(char cType, std::string_view strBytes)
    {
        m_strBytes += cType;
        Put(static_cast<uint32_t>(strBytes.size()));
        m_strBytes += strBytes;
        return 1;
    }
    size_t Value(std::string_view strText) { return Text('S', strText); }
    size_t Value(const std::string& rText) { return Text('S', rText); }
    size_t Value(const char* szText) { return Text('S', szText); }
    size_t Value(const SRaw& rRaw) { return Text('R', rRaw.strBytes); }
    size_t Value(const std::vector<float>& rNumbers) { return Array('f', rNumbers); }
    size_t Value(const std::vector<double>& rNumbers) { return Array('d', rNumbers); }
    size_t Value(const std::vector<int32_t>& rNumbers) { return Array('i', rNumbers); }
    size_t Value(const std::vector<int64_t>& rNumbers) { return Array('l', rNumbers); }
    size_t Value(const std::vector<char>& rNumbers) { return Array('b', rNumbers); }
    template <class T>
    size_t Array(char cType, const std::vector<T>& rNumbers)
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
        m_strBytes += cType;
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
