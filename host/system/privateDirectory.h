// A directory for what a run keeps for itself.
#pragma once

#include <filesystem>

namespace mordhost {

// Makes a new directory below that for temporary files, which only this user can enter. Throws RunError, which says
// what is wrong with the latter and how to name another one.
std::filesystem::path MakePrivateDirectory();

} // namespace mordhost
