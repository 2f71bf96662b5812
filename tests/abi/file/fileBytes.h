// The bytes of a built file, read with bounds.
#pragma once

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace edge {

// Throws std::runtime_error for a file that cannot be read, and std::out_of_range for a place outside the file.
class FileBytes {
public:
    explicit FileBytes(const std::filesystem::path& path) {
        std::ifstream stream(path, std::ios::binary);
        if (!stream) {
            throw std::runtime_error("cannot read " + path.string());
        }
        m_bytes.assign(std::istreambuf_iterator<char>(stream), {});
    }

    // The record at `offset`; the file and this machine are both little-endian.
    template <typename Value>
    Value At(size_t offset) const {
        Value value;
        std::memcpy(&value, m_bytes.data() + offset, Check(offset, sizeof value));
        return value;
    }

    // The text at `offset` up to its NUL.
    std::string TextAt(size_t offset) const { return m_bytes.substr(offset).c_str(); }

    // `size` bytes at `offset`.
    std::string Range(size_t offset, size_t size) const { return m_bytes.substr(offset, Check(offset, size)); }

    bool Contains(const std::string& text) const { return m_bytes.find(text) != std::string::npos; }

private:
    size_t Check(size_t offset, size_t size) const {
        if (offset > m_bytes.size() || size > m_bytes.size() - offset) {
            throw std::out_of_range("a place outside the file");
        }
        return size;
    }

    std::string m_bytes;
};

} // namespace edge
