#include "kit/system/guardedText.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#include <sys/mman.h>
#include <unistd.h>

namespace kit {

GuardedText::GuardedText(std::string_view text) : m_size(text.size()) {
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t readable = (text.size() / page + 1) * page;
    m_areaSize = readable + page;
    m_area = mmap(nullptr, m_areaSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (m_area == MAP_FAILED || mprotect(static_cast<char*>(m_area) + readable, page, PROT_NONE) != 0) {
        throw std::system_error(errno, std::generic_category(), "guarded memory");
    }
    m_data = static_cast<char*>(m_area) + readable - text.size();
    std::memcpy(m_data, text.data(), text.size());
}

GuardedText::~GuardedText() {
    munmap(m_area, m_areaSize);
}

} // namespace kit
