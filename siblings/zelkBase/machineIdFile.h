// A file that holds a machine id, as Linux systems keep it.
#pragma once

#include <string>

namespace siblings {

// The id in the file at `path`: 32 hexadecimal digits, with or without a line feed behind them, as they stand there.
// Empty for anything else: no file, the word "uninitialized" of a system that has not started up yet, digits that are
// all 0.
std::string ReadMachineIdFile(const char* path);

} // namespace siblings
