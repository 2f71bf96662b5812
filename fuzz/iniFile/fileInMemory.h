// A file that never reaches a disk.
#pragma once

#include <string>

// The path of a file that holds `bytes`, until the next call. One thread alone.
const std::string& FileInMemory(const std::string& bytes);
