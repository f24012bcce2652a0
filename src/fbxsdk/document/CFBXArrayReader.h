// Unpacks the array values of FBX files.
#pragma once

#include "fbxsdk/document/CFBXValue.h"
#include "qdcommon/CQDString.h"

#include <cstdint>
#include <vector>

class CFBXArrayReader
{
  public:
    // Replaces what the vector holds by the numbers of the array. False, with the vector empty and the reason
    // in the error, when the array holds other than it says. Takes no more memory than the array really has
    // numbers.
    static bool Read(const CFBXValue& rArray, std::vector<double>& rVector, CQDString& rError);
    static bool Read(const CFBXValue& rArray, std::vector<float>& rVector, CQDString& rError);
    static bool Read(const CFBXValue& rArray, std::vector<int32_t>& rVector, CQDString& rError);
    static bool Read(const CFBXValue& rArray, std::vector<int64_t>& rVector, CQDString& rError);

    // Bytes of one number of a binary array.
    static size_t GetNumberSize(EFBXType eType);
    // Whether so many packed bytes can be so many numbers.
    static bool MayHold(size_t nPacked, size_t nCount, EFBXType eType);
};
