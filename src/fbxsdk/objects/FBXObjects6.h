// Fills the object table from files of version 6: objects by name, parts of models inside of them, takes.
#pragma once

class CFBXObjectTable;

// The document has an Objects record. What is wrong with single objects is logged.
void ReadFBXObjects6(CFBXObjectTable& rTable);
