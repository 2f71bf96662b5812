#include "system/filePath.h"

namespace mordhost {

std::filesystem::path PathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace mordhost
