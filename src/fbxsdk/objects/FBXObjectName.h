// Names of objects as files write them: "Box\0\1Model" in binary files, "Model::Box" in ASCII ones.
#pragma once

#include <cstddef>
#include <string_view>

// The name without the class. Files before 5800 write none; then the name is given as it is, even when it
// has colons of its own, unless they follow the given class.
std::string_view CutFBXClass(std::string_view strFullName, std::string_view strClass, bool bASCII);

// The name without the "_ncl1_2" that writers of version 6 append to tell equal names apart.
std::string_view CutFBXClash(std::string_view strName);

// A name of thousands of bytes, which no tool writes, is cut: things that are made of an object have its name
// as a part of theirs, each its own copy.
std::string_view LimitFBXName(std::string_view strName, size_t uiMaxLength = 1024);
// One that is cut names no file: systems take no longer ones.
inline std::string_view LimitFBXFileName(std::string_view strName) { return LimitFBXName(strName, 4096); }
