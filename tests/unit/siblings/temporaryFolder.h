// A temporary directory whose path has characters beyond ASCII, for the wide texts of the siblings' interfaces.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "kit/system/temporaryDirectory.h"
#include "unit/siblings/systemKit.h"

namespace siblingTest {

class TemporaryFolder : public kit::TemporaryDirectory {
public:
    TemporaryFolder() : TemporaryDirectory("siblings-\xC3\xA4\xE4\xB8\x96-") {}

    // The path as wide text, without and with a separator at the end.
    WideString Text() const { return Path().string<WideChar>(); }
    WideString TextWithSeparator() const { return (Path() / "").string<WideChar>(); }
};

// Returns the bytes of a file; an empty text if it does not exist.
inline std::string ReadFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteFile(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

} // namespace siblingTest
