// The words of ASCII FBX files.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

// What a character of an ASCII file is.
enum class EFBXChar : unsigned char
{
    WORD,
    SEPARATOR,
    COMMENT,
    MARK
};

constexpr std::array<EFBXChar, 256> MakeFBXChars()
{
    std::array<EFBXChar, 256> arrChars{};
    for (const char c : std::string_view(" \t\r\n\v\f,"))
    {
        arrChars[static_cast<unsigned char>(c)] = EFBXChar::SEPARATOR;
    }
    for (const char c : std::string_view("{}\":"))
    {
        arrChars[static_cast<unsigned char>(c)] = EFBXChar::MARK;
    }
    arrChars[';'] = EFBXChar::COMMENT;
    return arrChars;
}

// Walks over a text word by word. White space, commas and comments (a ';' to the end of the line) separate;
// the marks '{', '}', '"' and ':' end a word and stand for themselves.
class CFBXTextScanner
{
  public:
    explicit CFBXTextScanner(std::string_view strText)
        : m_pBegin(strText.data()),
          m_pNext(m_pBegin),
          m_pEnd(m_pBegin + strText.size())
    {}

    // Skips what separates. The character that follows; '\0' at the end, see IsAtEnd.
    char Peek()
    {
        SkipSeparators();
        return m_pNext == m_pEnd ? '\0' : *m_pNext;
    }
    bool IsAtEnd() const { return m_pNext == m_pEnd; }
    // The word that follows, after what separates; empty at a mark and at the end.
    std::string_view ReadWord()
    {
        SkipSeparators();
        const char* pBegin = m_pNext;
        while (m_pNext != m_pEnd && CHARS[static_cast<unsigned char>(*m_pNext)] == EFBXChar::WORD)
        {
            ++m_pNext;
        }
        return {pBegin, static_cast<size_t>(m_pNext - pBegin)};
    }
    // The character directly here, without skipping.
    bool SkipMark(char cMark)
    {
        const bool bIs = m_pNext != m_pEnd && *m_pNext == cMark;
        m_pNext += bIs ? 1 : 0;
        return bIs;
    }

    size_t GetPlace() const { return static_cast<size_t>(m_pNext - m_pBegin); }
    void SetPlace(size_t nPlace) { m_pNext = m_pBegin + nPlace; }

  private:
    static constexpr std::array<EFBXChar, 256> CHARS = MakeFBXChars();

    void SkipSeparators()
    {
        for (; m_pNext != m_pEnd; ++m_pNext)
        {
            const EFBXChar eChar = CHARS[static_cast<unsigned char>(*m_pNext)];
            if (eChar == EFBXChar::COMMENT)
            {
                while (m_pNext + 1 != m_pEnd && m_pNext[1] != '\n')
                {
                    ++m_pNext;
                }
            }
            else if (eChar != EFBXChar::SEPARATOR)
            {
                return;
            }
        }
    }

    const char* m_pBegin;
    const char* m_pNext;
    const char* m_pEnd;
};
