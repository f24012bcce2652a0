// Settings of files before version 7 that are not among the global settings' properties.
#pragma once

class CFBXObjectTable;
class CFBXRecord;

// From the record's Settings. What the global settings have already stays.
void ReadFBXLegacySettings(const CFBXRecord& rRecord, CFBXObjectTable& rTable);
