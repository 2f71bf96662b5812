// File names as the command line and documents give them, in UTF-8, and the files behind them.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace mordhost {

// A file that cannot be read or written: what() names it and says why.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::filesystem::path PathOf(const std::string& utf8);
std::string Utf8Of(const std::filesystem::path& path);

// The bytes of the whole file. Throws FileError, and Stopped when a request to stop breaks the reading off.
std::string ReadWholeFile(const std::string& name);

} // namespace mordhost
