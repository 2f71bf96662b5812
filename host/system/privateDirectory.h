// A temporary directory of one run.
#pragma once

#include <filesystem>

namespace mordhost {

// Creates a directory below the one for temporary files, which only the current user can enter. The caller removes it.
// Throws RunError, whose message gives the reason and the environment variable that selects another directory.
std::filesystem::path MakePrivateDirectory();

} // namespace mordhost
