// A COLLADA source as typed data: a number of values, each of the same number of primitives.
#pragma once

#include "qdcommon/CQDString.h"
#include "qdcommon/CRefObject.h"
#include "qdsgloader_collada/CColladaDataSourceType.h"

#include <string_view>

enum class EColladaPrimitive
{
    Float,
    String,
    IDRef
};

class CColladaDataSource : public CRefObject
{
  public:
    const CColladaDataSourceType& GetType() const { return m_rType; }
    // Whether the source is of the kind.
    bool InstanceOf(const CColladaDataSourceType* pType) const;
    int32_t GetNumValues() const { return m_nNumValues; }
    int32_t GetPrimitivesPerValue() const { return m_nPrimitivesPerValue; }

    // Writes kind, address and all values to the log (level 7), each line behind the indent.
    void OutputDebugInfo(const CQDString& rIndent) const;

    // What an accessor's parameter of the type holds; false (reported) for a type that is not known.
    static bool GetPrimTypeAndNumberFromName(std::string_view strName, EColladaPrimitive& rePrimitive,
                                             int32_t& rnNumPrimitives);

  protected:
    explicit CColladaDataSource(const CColladaDataSourceType& rType) : m_rType(rType) {}
    // False (reported) for less than one primitive a value, or a negative number of values.
    bool SetShape(int32_t nPrimitivesPerValue, int32_t nNumValues);
    // A value's primitives as text.
    virtual CQDString FormatValue(int32_t nIndex) const = 0;

  private:
    const CColladaDataSourceType& m_rType;
    int32_t m_nNumValues = 0;
    int32_t m_nPrimitivesPerValue = 0;
};
