#include "compare/rehearsalDots.h"

#include <exception>

namespace mordhost {

DotStore::Result RehearsalDots::Find(const std::vector<std::string_view>& guids,
                                     std::vector<const std::string*>& dots) {
    if (m_isEmpty) {
        dots.assign(guids.size(), nullptr);
        return Result::answered;
    }
    const Result result = m_dots.Find(guids, dots);
    const auto& deleted = m_deleted[m_selected];
    for (size_t i = 0; !deleted.empty() && i < guids.size(); ++i) {
        if (deleted.contains(guids[i])) {
            dots[i] = nullptr;
        }
    }
    return result;
}

bool RehearsalDots::Delete(const std::string& guid) noexcept {
    try {
        Find({guid}, m_found);
        return m_found.front() != nullptr && m_deleted[m_selected].insert(guid).second;
    } catch (const std::exception&) { // out of memory
        return false;
    }
}

} // namespace mordhost
