// Names of files that other files give: of any system, and perhaps of another machine.
#pragma once

#include "qdcommon/CQDString.h"

#include <string_view>

class CFileName
{
  public:
    // "C:" and the like.
    static bool StartsWithDrive(std::string_view strName);
    // What is behind the last slash of either kind.
    static CQDString GetBaseName(std::string_view strName);
    // With slashes where Windows has back slashes.
    static CQDString MakeSlashes(std::string_view strName);
    // Whether a file can be opened by the name as it stands; never for folders.
    static bool IsFile(const CQDString& rName);
};
