#include "kit/system/guardedText.h"

#include <cstring>
#include <system_error>

#include <windows.h>

namespace kit {

GuardedText::GuardedText(std::string_view text) : m_size(text.size()) {
    constexpr size_t page = 4096;
    const size_t readable = (text.size() / page + 1) * page;
    m_areaSize = readable + page;
    m_area = VirtualAlloc(nullptr, m_areaSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    DWORD before = 0;
    if (m_area == nullptr || !VirtualProtect(static_cast<char*>(m_area) + readable, page, PAGE_NOACCESS, &before)) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "guarded memory");
    }
    m_data = static_cast<char*>(m_area) + readable - text.size();
    std::memcpy(m_data, text.data(), text.size());
}

GuardedText::~GuardedText() {
    VirtualFree(m_area, 0, MEM_RELEASE);
}

} // namespace kit
