// The temporary directory of a test.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace mordhostTest {

// The path of a UTF-8 text.
inline std::filesystem::path PathOfUtf8(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

class TemporaryDirectory {
public:
    // The name of the directory begins with `prefix`, which is UTF-8.
    explicit TemporaryDirectory(const std::string& prefix = "mordhostTest-") {
        // Static, because a test may change the environment.
        static const std::filesystem::path parent = std::filesystem::temp_directory_path();
        std::random_device random;
        do {
            m_path = parent / PathOfUtf8(prefix + std::to_string(random()));
        } while (!std::filesystem::create_directory(m_path));
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

    // The name of a file in the directory, in UTF-8 and with forward slashes.
    std::string Name(const std::string& file) const {
        const std::u8string name = (m_path / PathOfUtf8(file)).generic_u8string();
        return {name.begin(), name.end()};
    }

    // Writes the file and returns its name.
    std::string Write(const std::string& file, const std::string& text) const {
        const std::string name = Name(file);
        std::ofstream(PathOfUtf8(name), std::ios::binary) << text;
        return name;
    }

    // The text of the file; empty if it does not exist.
    std::string Read(const std::string& file) const {
        std::ifstream stream(PathOfUtf8(Name(file)), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    bool Has(const std::string& file) const { return std::filesystem::exists(PathOfUtf8(Name(file))); }

private:
    std::filesystem::path m_path;
};

} // namespace mordhostTest
