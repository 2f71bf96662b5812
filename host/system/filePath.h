// Conversion between UTF-8 names, as the command line and documents hold them, and paths of the system.
#pragma once

#include <filesystem>
#include <string>

namespace mordhost {

std::filesystem::path PathOf(const std::string& utf8);
std::string Utf8Of(const std::filesystem::path& path);

} // namespace mordhost
