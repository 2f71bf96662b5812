// The debug output is the standard error here.
#include "kit/system/debugOutput.h"

#include <cstdio>
#include <stdexcept>
#include <vector>

#include <unistd.h>

namespace kit {

struct DebugOutput::Capture {
    std::FILE* file = std::tmpfile();
    int standardError = dup(STDERR_FILENO);
};

DebugOutput::DebugOutput() : m_capture(std::make_unique<Capture>()) {
    if (m_capture->file == nullptr || m_capture->standardError < 0) {
        throw std::runtime_error("the standard error cannot be captured");
    }
    std::fflush(stderr);
    dup2(fileno(m_capture->file), STDERR_FILENO);
}

DebugOutput::~DebugOutput() {
    std::fflush(stderr);
    dup2(m_capture->standardError, STDERR_FILENO);
    close(m_capture->standardError);
    std::fclose(m_capture->file);
}

std::string DebugOutput::Text() const {
    std::fflush(stderr);
    const int file = fileno(m_capture->file);
    const off_t end = lseek(file, 0, SEEK_END);
    std::string text(static_cast<size_t>(end), '\0');
    if (pread(file, text.data(), text.size(), 0) != end) {
        throw std::runtime_error("the captured standard error cannot be read");
    }
    return text;
}

} // namespace kit
