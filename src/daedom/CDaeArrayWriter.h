// Fills an array of the COLLADA DOM from an element's character data, piece by piece as the parser hands it
// over, so that the text of a large array is never gathered.
#pragma once

#include "daedom/CDaeAccess.h"

#include <string>
#include <string_view>

class CDaeArrayWriter
{
  public:
    // What is in the array (its default) stays until the first value comes. The array must outlive the
    // writing.
    void Begin(daeArray& rArray, daeAtomicType& rType);
    // Writes the values of a piece of text. A token that its end may cut in two is kept for the next piece.
    // False when one is no value of the array's type: GetBadToken names it, and nothing more may be written.
    bool Write(std::string_view strText);
    // Writes the token that is still kept, and gives back the memory that the array doesn't need.
    bool End();

    // Whether the values are numbers (or booleans): text that is written is then ASCII throughout.
    bool IsOfNumbers() const { return m_pfnScan != &CDaeArrayWriter::ScanOthers; }
    // Whether they are bytes, written as pairs of hexadecimal digits in tokens of any length.
    bool IsOfBytes() const { return m_pfnScan == &CDaeArrayWriter::ScanHex; }
    // The token that could not be read; empty when memory ran out.
    const std::string& GetBadToken() const { return m_strToken; }

  private:
    using CScan = bool (CDaeArrayWriter::*)(std::string_view);

    template <class T>
    bool ScanNumbers(std::string_view strText);
    bool ScanOthers(std::string_view strText);
    bool ScanHex(std::string_view strText);
    bool Scan(std::string_view strText);
    bool Reserve(size_t nCount);
    bool Resize(size_t nCapacity);

    daeArray* m_pArray = nullptr;
    daeAtomicType* m_pType = nullptr;
    CScan m_pfnScan = nullptr;
    std::string m_strToken; // the beginning of a token, then a bad one
    bool m_bEmpty = true;   // no value has come yet
    int m_nHighDigit = -1;  // of a byte that is not complete
};
