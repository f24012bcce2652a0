// One property of an object.
#pragma once

#include "fbxsdk/base/FbxVector.h"

#include <cstdint>
#include <string_view>

struct CFBXProperty;

// A borrowed view: it lives as long as the object's scene. Of a property that is not there, every value is
// the default handed in.
class FbxProperty
{
  public:
    FbxProperty() = default;
    explicit FbxProperty(const CFBXProperty* pProperty) : m_pProperty(pProperty) {}

    bool IsValid() const { return m_pProperty != nullptr; }
    std::string_view GetName() const;
    // "double", "KString", "Lcl Translation": as the file writes it.
    std::string_view GetTypeName() const;
    // Made by the artist, not by the tool.
    bool IsUserDefined() const;
    // Whether the (first) value is a text.
    bool IsString() const;

    double GetDouble(double dDefault = 0) const;
    int64_t GetInt(int64_t nDefault = 0) const;
    bool GetBool(bool bDefault = false) const;
    // One of an enumeration; the default also for a number that is none of it.
    template <class ENUM>
    ENUM GetEnum(ENUM eFirst, ENUM eLast, ENUM eDefault) const
    {
        const int64_t nValue = GetInt(eDefault);
        return nValue >= eFirst && nValue <= eLast ? static_cast<ENUM>(nValue) : eDefault;
    }
    // Its first three values; those that are missing are the default's.
    FbxDouble3 GetDouble3(const FbxDouble3& rDefault = {}) const;
    std::string_view GetString(std::string_view strDefault = {}) const;

  private:
    const CFBXProperty* m_pProperty = nullptr;
};
