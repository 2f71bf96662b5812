#include <algorithm>

#include "unit/host/toldPath.h"

namespace mordhostTest {

std::string ToldPath(const std::filesystem::path& file) {
    std::string path = std::filesystem::canonical(file).native();
    std::transform(path.begin(), path.end(), path.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return path;
}

} // namespace mordhostTest
