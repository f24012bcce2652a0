// The ticks of a file as ours.
#pragma once

#include "fbxsdk/base/FbxTime.h"

class CFBXObjectTable;

// Files since SDK 2020 may count in other ticks than all before them; their header says so.
class CFBXTimeScale
{
  public:
    explicit CFBXTimeScale(const CFBXObjectTable& rTable);

    FbxTime operator()(int64_t nFileTicks) const;

  private:
    int64_t m_nFileTicksPerSecond;
};
