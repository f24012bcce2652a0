// Fills the object table from files before version 6: models at the top level, with everything that belongs
// to them inside.
#pragma once

#include "qdcommon/CQDString.h"

class CFBXObjectTable;

// False, with the reason in the error, when the file has neither models nor what goes with them.
bool ReadFBXObjects5(CFBXObjectTable& rTable, CQDString& rError);
