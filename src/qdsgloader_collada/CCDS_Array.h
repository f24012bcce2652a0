// What the kinds of data sources have in common: the primitives of all values, value after value.
#pragma once

#include "qdcommon/CLog.h"
#include "qdsgloader_collada/CColladaDataSource.h"
#include "qdsgloader_collada/CQDSGLoaderColladaLib.h"

#include <algorithm>
#include <span>
#include <vector>

template <class T>
class CCDS_Array : public CColladaDataSource
{
  public:
    // A value's primitives; empty (reported) for an index outside the source.
    std::span<const T> GetValue(int32_t nIndex) const
    {
        if (nIndex < 0 || nIndex >= GetNumValues())
        {
            Log(QD_COLLADA, LOG_ERROR, "Handed in invalid index %d", nIndex);
            return {};
        }
        return GetPrimitives().subspan(GetPosition(nIndex, 0), static_cast<size_t>(GetPrimitivesPerValue()));
    }
    bool SetValue(int32_t nIndex, std::span<const T> arrValue)
    {
        if (nIndex < 0 || nIndex >= GetNumValues())
        {
            Log(QD_COLLADA, LOG_ERROR, "Handed in invalid index %d", nIndex);
            return false;
        }
        if (arrValue.size() != static_cast<size_t>(GetPrimitivesPerValue()))
        {
            Log(QD_COLLADA, LOG_ERROR,
                "Value given has %d primitives.  This source has %d primitives per value.",
                static_cast<int>(arrValue.size()), GetPrimitivesPerValue());
            return false;
        }
        std::ranges::copy(arrValue,
                          EditPrimitives().begin() + static_cast<ptrdiff_t>(GetPosition(nIndex, 0)));
        return true;
    }
    // Null (reported) for indices outside the source.
    const T* GetPrimitive(int32_t nValueIndex, int32_t nPrimitiveIndex) const
    {
        return CheckIndices(nValueIndex, nPrimitiveIndex)
                   ? &m_vecPrimitives[GetPosition(nValueIndex, nPrimitiveIndex)]
                   : nullptr;
    }
    bool SetPrimitive(int32_t nValueIndex, int32_t nPrimitiveIndex, const T& rNewPrimitive)
    {
        if (!CheckIndices(nValueIndex, nPrimitiveIndex))
        {
            return false;
        }
        m_vecPrimitives[GetPosition(nValueIndex, nPrimitiveIndex)] = rNewPrimitive;
        return true;
    }

    // Of all values, value after value.
    std::span<const T> GetPrimitives() const { return m_vecPrimitives; }
    std::span<T> EditPrimitives() { return m_vecPrimitives; }

  protected:
    using CColladaDataSource::CColladaDataSource;

    // Gives the source its shape, all primitives in their empty state.
    bool Init(int32_t nPrimitivesPerValue, int32_t nNumValues)
    {
        if (!SetShape(nPrimitivesPerValue, nNumValues))
        {
            return false;
        }
        try
        {
            m_vecPrimitives.resize(GetPosition(nNumValues, 0));
        }
        catch (const std::exception&)
        {
            Log(QD_COLLADA, LOG_ERROR, "Failed to create primitives array.");
            return false;
        }
        return true;
    }

  private:
    bool CheckIndices(int32_t nValueIndex, int32_t nPrimitiveIndex) const
    {
        if (nValueIndex < 0 || nValueIndex >= GetNumValues())
        {
            Log(QD_COLLADA, LOG_ERROR, "Handed in invalid value index %d", nValueIndex);
            return false;
        }
        if (nPrimitiveIndex < 0 || nPrimitiveIndex >= GetPrimitivesPerValue())
        {
            Log(QD_COLLADA, LOG_ERROR, "Handed in invalid primitive index %d", nPrimitiveIndex);
            return false;
        }
        return true;
    }
    size_t GetPosition(int32_t nValueIndex, int32_t nPrimitiveIndex) const
    {
        return static_cast<size_t>(nValueIndex) * static_cast<size_t>(GetPrimitivesPerValue()) +
               static_cast<size_t>(nPrimitiveIndex);
    }

    std::vector<T> m_vecPrimitives;
};
