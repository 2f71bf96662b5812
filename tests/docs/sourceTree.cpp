#include "docs/sourceTree.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace docs {

std::filesystem::path InTree(std::string_view path) {
    return std::filesystem::path(MORDREV_SOURCE_DIR) / path;
}

std::string ReadText(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + file.string());
    }
    std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    std::erase(text, '\r');
    return text;
}

std::vector<std::filesystem::path> FilesBelow(std::string_view folder, std::string_view extension) {
    std::vector<std::filesystem::path> files;
    if (!std::filesystem::exists(InTree(folder))) {
        return files;
    }
    for (const auto& entry : std::filesystem::recursive_directory_iterator(InTree(folder))) {
        if (entry.is_regular_file() && entry.path().extension() == extension) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace docs
