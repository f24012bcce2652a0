// Random changes to an XML document: pieces of markup put in, stretches taken out, doubled and swapped.
#pragma once

#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

inline std::string MutateXml(std::string strDocument, std::mt19937& rRandom)
{
    static constexpr std::string_view PIECES[] = {"<",
                                                  ">",
                                                  "</p>",
                                                  "<p>",
                                                  "<node>",
                                                  "</node>",
                                                  "<![CDATA[",
                                                  "]]>",
                                                  "<!--",
                                                  "-->",
                                                  "&e;",
                                                  "&f;",
                                                  "&#48;",
                                                  "&zz;",
                                                  "<?x ?>",
                                                  " xmlns=\"\"",
                                                  " x:a=\"\"",
                                                  "\"",
                                                  "x:",
                                                  "1e999",
                                                  "-1",
                                                  "1.#IND",
                                                  "NaN",
                                                  "4294967296",
                                                  "\xff",
                                                  "\x01",
                                                  "\n",
                                                  "<extra>",
                                                  "</extra>",
                                                  "<ref/>",
                                                  "<surface>",
                                                  "<float_array>",
                                                  "<technique profile=\"a\">",
                                                  "</technique>",
                                                  "<COLLADA>",
                                                  "<!DOCTYPE a>"};
    const auto Below = [&](size_t n) { return n == 0 ? 0 : rRandom() % n; };
    for (size_t nChanges = 1 + Below(4); nChanges > 0; --nChanges)
    {
        const size_t nPlace = Below(strDocument.size());
        const size_t nLength = Below(rRandom() % 4 == 0 ? 2000 : 30);
        switch (rRandom() % 5)
        {
        case 0:
            strDocument.insert(nPlace, PIECES[Below(std::size(PIECES))]);
            break;
        case 1:
            strDocument.erase(nPlace, nLength);
            break;
        case 2:
            strDocument.insert(Below(strDocument.size()), strDocument.substr(nPlace, nLength));
            break;
        case 3:
            strDocument.replace(nPlace, nLength, strDocument.substr(Below(strDocument.size()), nLength));
            break;
        default:
            if (!strDocument.empty())
            {
                strDocument[nPlace] = static_cast<char>(rRandom());
            }
        }
    }
    return strDocument;
}
