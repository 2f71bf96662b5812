// The files of the source tree, for tests that read them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace docs {

// `path` is relative to the root of the tree: "docs/documents.md".
std::filesystem::path InTree(std::string_view path);

// The whole file with its line ends as "\n". Throws std::runtime_error when it cannot be read.
std::string ReadText(const std::filesystem::path& file);

// The files below `folder` with this extension, such as ".cpp", in the order of their paths; none when there is no such
// folder.
std::vector<std::filesystem::path> FilesBelow(std::string_view folder, std::string_view extension);

} // namespace docs
