// Reading and writing of structs that are made of floats alone: as they stand in memory.
#pragma once

#include "qdcommon/CLogChecks.h"
#include "qdcommon/CStream.h"

#include <type_traits>

// False (reported) when the stream holds less.
template <class T>
bool ReadFloats(CStream* pStream, T& rFloats)
{
    static_assert(std::is_trivially_copyable_v<T> && alignof(T) == alignof(float));
    QD_CHECK(pStream->CanRead(1, sizeof(T)), false);
    pStream->Read(&rFloats, sizeof(T));
    return true;
}

template <class T>
bool WriteFloats(CStream* pStream, const T& rFloats)
{
    static_assert(std::is_trivially_copyable_v<T> && alignof(T) == alignof(float));
    return pStream->Write(&rFloats, sizeof(T));
}
