// Converts the expected output of an example with programs from Linux to this platform.
#pragma once

#include <string>

namespace mordhostTest {

// The table: with the process names of this platform, or masked ids if the library does not find the paths, and with
// the width of their column adapted.
std::string TableHere(const std::string& expected);

// The reports, with the directories of programs masked.
std::string ReportsHere(const std::string& expected);

// Apply the same masks to actual tables and reports.
std::string MaskIds(const std::string& table);
std::string MaskDirectories(const std::string& reports);

} // namespace mordhostTest
