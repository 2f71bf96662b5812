#include <cstdint>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

#include "appendFile.h"

namespace bench {

namespace {

int DescriptorOf(void* file) {
    return static_cast<int>(reinterpret_cast<intptr_t>(file));
}

} // namespace

AppendFile::AppendFile(const std::filesystem::path& path) {
    const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0640);
    if (file < 0) {
        throw std::runtime_error("cannot open " + path.string());
    }
    m_file = reinterpret_cast<void*>(static_cast<intptr_t>(file));
}

AppendFile::~AppendFile() {
    close(DescriptorOf(m_file));
}

void AppendFile::Append(std::string_view bytes) const {
    if (write(DescriptorOf(m_file), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("a write has failed");
    }
}

} // namespace bench
