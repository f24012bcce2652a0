// The properties of an object: its own, and behind them the defaults that the file's definitions give for all
// objects of its class.
#pragma once

#include "fbxsdk/objects/CFBXProperty.h"

#include <unordered_map>
#include <vector>

class CFBXRecord;

class CFBXProperties
{
  public:
    // Takes the lines of the record's Properties70 or Properties60; none when it has neither.
    void Read(const CFBXRecord& rObject);
    // Behind those that are there. The texts and values are borrowed.
    void Add(const CFBXProperty& rProperty);
    // Borrowed; null: no defaults.
    void SetTemplate(const CFBXProperties* pTemplate) { m_pTemplate = pTemplate; }

    // The object's own, else that of the template, else null.
    const CFBXProperty* Find(std::string_view strName) const;
    // The first value of Find.
    int64_t GetInt64(std::string_view strName, int64_t nDefault = 0) const;
    double GetDouble(std::string_view strName, double dDefault = 0) const;
    std::string_view GetString(std::string_view strName) const;

    // The object's own, in file order; those of the template are not among them.
    std::vector<CFBXProperty>::const_iterator begin() const { return m_vecProperties.begin(); }
    std::vector<CFBXProperty>::const_iterator end() const { return m_vecProperties.end(); }
    size_t size() const { return m_vecProperties.size(); }

  private:
    std::vector<CFBXProperty> m_vecProperties;
    std::unordered_map<std::string_view, size_t> m_mapPlaces; // of unusually many properties only
    const CFBXProperties* m_pTemplate = nullptr;
};
