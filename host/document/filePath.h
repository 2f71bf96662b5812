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

// The bytes of the whole file. Throws FileError.
std::string ReadWholeFile(const std::string& name);

// Replaces the file by `text`, so that at every moment, a crash included, either the old file or the new one stands
// whole under the name: the text goes into a new file beside it, to the disk, and then takes the name over. Throws
// FileError and leaves the old file.
void ReplaceFile(const std::string& name, const std::string& text);

} // namespace mordhost
