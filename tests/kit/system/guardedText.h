// A text directly before memory that cannot be accessed. There is a body for each platform.
#pragma once

#include <cstddef>
#include <string_view>

namespace kit {

// Holds a copy of the text. An access to the byte behind its last one ends the process, in every build.
class GuardedText {
public:
    explicit GuardedText(std::string_view text);
    ~GuardedText();
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;

    char* Data() const { return m_data; }
    size_t Size() const { return m_size; }
    std::string_view View() const { return {m_data, m_size}; }

private:
    void* m_area;
    size_t m_areaSize;
    char* m_data;
    size_t m_size;
};

} // namespace kit
