// The 8-bit string of the system: names, file names and log texts, UTF-8 where a meaning is attached to
// bytes.
#pragma once

#include <string>

using CQDString = std::string;
