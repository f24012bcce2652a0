// Damaged variants of a file: cut off at every byte, and changed at random places in the ways that find most
// faults.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

// The sanitizer refuses any single block beyond this: a small file must never ask for one.
extern "C" const char* __asan_default_options();
const char* __asan_default_options() { return "max_allocation_size_mb=256:allocator_may_return_null=0"; }

class CMutator
{
  public:
    explicit CMutator(const std::string& rSeed) : m_strSeed(rSeed) {}

    // Calls the function with every truncation, then with nCount mutations; the same ones in every run.
    template <class FUNCTION>
    void ForEach(int nCount, FUNCTION&& fnEach)
    {
        for (size_t nLength = 0; nLength <= m_strSeed.size(); ++nLength)
        {
            fnEach(m_strSeed.substr(0, nLength));
        }
        for (int n = 0; n < nCount; ++n)
        {
            fnEach(Mutate());
        }
    }

  private:
    size_t Below(size_t nEnd) { return std::uniform_int_distribution<size_t>(0, nEnd - 1)(m_objRandom); }

    std::string Mutate()
    {
        std::string strBytes = m_strSeed;
        for (size_t nLeft = 1 + Below(4); nLeft > 0 && strBytes.size() > 8; --nLeft)
        {
            const size_t nPlace = Below(strBytes.size() - 4);
            switch (Below(8))
            {
            case 0: // a neighbouring value
                strBytes[nPlace] = static_cast<char>(strBytes[nPlace] + (Below(2) == 0 ? 1 : -1));
                break;
            case 1:
                strBytes[nPlace] = static_cast<char>(Below(256));
                break;
            case 2: // a bit
                strBytes[nPlace] = static_cast<char>(strBytes[nPlace] ^ (1 << Below(8)));
                break;
            case 3:
            { // a number that is hard to digest
                constexpr uint32_t HARD[] = {0,          1,          2,          3,
                                             0x7F,       0xFFFF,     0x10000,    0x3FFFFFFF,
                                             0x40000000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF,
                                             0x7FC00000, 0x7F800000, 0xFF7FFFFF, 0x20000001};
                const uint32_t uiValue = HARD[Below(std::size(HARD))];
                std::memcpy(strBytes.data() + nPlace, &uiValue, sizeof(uiValue));
                break;
            }
            case 4:
            { // another place's bytes
                const size_t nLength = 1 + Below(std::min<size_t>(64, strBytes.size() - nPlace));
                strBytes.replace(nPlace, nLength, m_strSeed, Below(m_strSeed.size()), nLength);
                break;
            }
            case 5:
                strBytes.erase(nPlace, 1 + Below(32));
                break;
            case 6: // the same bytes again
                strBytes.insert(nPlace, strBytes, Below(strBytes.size()), 1 + Below(64));
                break;
            default:
            { // a small number: ids and counts are
                const auto uiValue = static_cast<uint32_t>(Below(64));
                std::memcpy(strBytes.data() + nPlace, &uiValue, sizeof(uiValue));
                break;
            }
            }
        }
        return strBytes;
    }

    std::string m_strSeed;
    std::mt19937 m_objRandom{20};
};
