// Fills the object table from files of version 7: numbered objects, connections by number.
#pragma once

#include "qdcommon/CQDString.h"

class CFBXObjectTable;

// False, with the reason in the error, when the document has no objects' record.
bool ReadFBXObjects7(CFBXObjectTable& rTable, CQDString& rError);
