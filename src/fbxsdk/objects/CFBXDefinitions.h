// The property templates of a file: for each class, the values of properties that its objects do not write.
#pragma once

#include <map>
#include <string_view>
#include <utility>

class CFBXObjectTable;
class CFBXProperties;
class CFBXRecord;

class CFBXDefinitions
{
  public:
    // The templates go into the table. Without a Definitions record there are none.
    CFBXDefinitions(const CFBXRecord& rRoot, CFBXObjectTable& rTable);

    // Null when there is none. Of a class that has several kinds (node attributes, geometry) a file gives
    // the template of one kind only, which must not be taken for the others.
    const CFBXProperties* Find(std::string_view strClass, std::string_view strKind) const;

  private:
    // By class ("NodeAttribute") and, of one that has kinds, name ("Camera").
    std::map<std::pair<std::string_view, std::string_view>, const CFBXProperties*> m_mapTemplates;
};
