// A file in memory only.
#pragma once

#include <string>

// The path of a file with these bytes. The file is good until the next call. One thread alone.
const std::string& FileInMemory(const std::string& bytes);
