// What an example whose events name programs shows on this platform, where "expected" tells what it shows on Linux.
#pragma once

#include <string>

namespace mordhostTest {

// The table: the processes of the programs are named as this platform names them, or by a masked id where the library
// does not tell their paths, and their column is as wide as that needs.
std::string TableHere(const std::string& expected);

// The reports, in which the directory of a program is masked.
std::string ReportsHere(const std::string& expected);

// The table and the reports that came, with these masks.
std::string MaskIds(const std::string& table);
std::string MaskDirectories(const std::string& reports);

} // namespace mordhostTest
