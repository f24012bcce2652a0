// Properties of objects of files before version 6, which write each as a record of its own name.
#pragma once

class CFBXObjectTable;
class CFBXProperties;
class CFBXRecord;

// Of a model: its transform as far as it stands there, limits, and what its camera or light has.
void ReadFBXLegacyModel(const CFBXRecord& rModel, CFBXObjectTable& rTable, CFBXProperties& rProperties);
// From the values without keys of the channels inside of the record, a model's or a take's. What the
// properties have already stays.
void ReadFBXLegacyTransform(const CFBXRecord& rRecord, CFBXObjectTable& rTable, CFBXProperties& rProperties);
void ReadFBXLegacyMaterial(const CFBXRecord& rMaterial, CFBXObjectTable& rTable, CFBXProperties& rProperties);
