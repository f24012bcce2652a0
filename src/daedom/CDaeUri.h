// The texts that go where the COLLADA DOM wants a URI. Its parser drops a whole URI for one character that
// the standard does not allow, so such characters are escaped before it sees them.
#pragma once

#include <string>
#include <string_view>

// The document URI of a local file: absolute, "file://" and the path with all but plain characters escaped,
// so that
// '#', '?', '%' and spaces of the name stay part of the path.
std::string MakeDaeDocumentURI(const std::string& rFileName);

// The file that a name stands for: of a "file://" URI its path, and otherwise the name itself.
std::string GetDaeFilePath(const std::string& rName);

// Makes a URI reference out of what a document says: characters that no URI may hold (spaces, non-ASCII, a
// '%' that escapes nothing) are escaped, backslashes become slashes; everything else stays as written.
std::string EncodeDaeReference(std::string_view strText);

// Resolves %xx escapes.
std::string DecodeDaeReference(std::string_view strText);

// The value of a hexadecimal digit; -1 when the character is none.
int GetHexValue(char c);
