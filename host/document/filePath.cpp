#include "document/filePath.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include "system/hostSystem.h"

namespace mordhost {

std::filesystem::path PathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string ReadWholeFile(const std::string& name) {
    const std::filesystem::path path = PathOf(name);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        throw FileError("cannot read " + name + ": it is a directory");
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw FileError("cannot read " + name + ": " + std::generic_category().message(errno));
    }
    std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (file.bad()) {
        throw FileError("cannot read " + name);
    }
    return text;
}

void ReplaceFile(const std::string& name, const std::string& text) {
    const std::filesystem::path path = PathOf(name);
    std::filesystem::path fresh = path;
    fresh += ".mordhost-new";
    std::error_code error = WriteDurably(fresh, text);
    if (!error) {
        std::filesystem::rename(fresh, path, error); // replaces what stands there, in one step
    }
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(fresh, ignored);
        throw FileError("cannot write " + name + ": " + error.message());
    }
    SyncDirectoryOf(path);
}

} // namespace mordhost
