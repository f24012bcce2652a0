// Changes of ASCII FBX files that leave them readable: what is wrong then is what they say.
#pragma once

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

class CFBXTextMutator
{
  public:
    explicit CFBXTextMutator(const std::string& rSeed) : m_strSeed(rSeed) {}

    std::string Mutate()
    {
        std::string strText = m_strSeed;
        for (size_t nLeft = 1 + Below(6); nLeft > 0; --nLeft)
        {
            switch (Below(6))
            {
            case 0: // a number that is hard to digest
                Replace(strText, FindToken(strText, NUMBER), HARD[Below(std::size(HARD))]);
                break;
            case 1: // another number: ids, indices and counts are confused
            case 2:
                Replace(strText, FindToken(strText, NUMBER), GetText(FindToken(m_strSeed, NUMBER)));
                break;
            case 3: // another name
                Replace(strText, FindToken(strText, NAME), GetText(FindToken(m_strSeed, NAME)));
                break;
            case 4: // a record less
                Replace(strText, FindRecord(strText), "");
                break;
            default: // a record of another place
                strText.insert(FindRecord(strText).nBegin, GetText(FindRecord(m_strSeed)));
                break;
            }
        }
        return strText;
    }

  private:
    struct SRange
    {
        size_t nBegin;
        size_t nEnd;
    };

    static constexpr std::string_view NUMBER = "-+.0123456789e";
    static constexpr std::string_view NAME =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 |:";
    static constexpr const char* HARD[] = {"0",
                                           "-1",
                                           "1",
                                           "2",
                                           "2147483647",
                                           "2147483648",
                                           "-2147483648",
                                           "4294967295",
                                           "9223372036854775807",
                                           "-9223372036854775808",
                                           "1e308",
                                           "-1e308",
                                           "1e-308",
                                           "inf",
                                           "nan",
                                           "1e20",
                                           "65536",
                                           "1000000"};

    size_t Below(size_t nEnd) { return std::uniform_int_distribution<size_t>(0, nEnd - 1)(m_objRandom); }
    std::string GetText(SRange objRange) const
    {
        return m_strSeed.substr(objRange.nBegin, objRange.nEnd - objRange.nBegin);
    }
    static void Replace(std::string& rText, SRange objRange, const std::string& rWith)
    {
        rText.replace(objRange.nBegin, objRange.nEnd - objRange.nBegin, rWith);
    }
    // Some row of these characters; empty at the end when there is none.
    SRange FindToken(const std::string& rText, std::string_view strChars)
    {
        const size_t nFrom = Below(rText.size() + 1);
        // Numbers follow blanks and commas, names quotes.
        size_t nBegin = rText.find_first_of(strChars == NAME ? "\"" : ", \t", nFrom);
        nBegin = nBegin == std::string::npos ? rText.size() : nBegin + 1;
        return {nBegin, std::min(rText.find_first_not_of(strChars, nBegin), rText.size())};
    }
    // Some lines with as many braces open as closed.
    SRange FindRecord(const std::string& rText)
    {
        const size_t nFrom = rText.rfind('\n', Below(rText.size() + 1));
        const size_t nBegin = nFrom == std::string::npos ? 0 : nFrom + 1;
        int nOpen = 0;
        for (size_t nEnd = nBegin; nEnd < rText.size(); ++nEnd)
        {
            nOpen += rText[nEnd] == '{' ? 1 : rText[nEnd] == '}' ? -1 : 0;
            if (nOpen < 0)
            {
                break;
            }
            if (nOpen == 0 && rText[nEnd] == '\n')
            {
                return {nBegin, nEnd + 1};
            }
        }
        return {nBegin, nBegin};
    }

    std::string m_strSeed;
    std::mt19937 m_objRandom{6};
};
