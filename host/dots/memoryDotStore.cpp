#include "dots/memoryDotStore.h"

#include <exception>
#include <utility>

#include "document/replaceFile.h"
#include "dots/queryAnswer.h"

namespace mordhost {

MemoryDotStore::MemoryDotStore(DotTable dots, std::string file) : m_dots(std::move(dots)), m_file(std::move(file)) {
    for (const auto& [guid, mids] : m_dots) {
        m_members.emplace(guid, AnswerMember(guid, mids));
    }
}

const std::string* MemoryDotStore::Find(std::string_view guid) const {
    const auto member = m_members.find(guid);
    return member == m_members.end() ? nullptr : &member->second;
}

bool MemoryDotStore::Delete(const std::string& guid) noexcept {
    if (m_dots.erase(guid) == 0) {
        return false;
    }
    m_members.erase(guid);
    if (m_file.empty()) {
        return true;
    }
    try {
        ReplaceWholeFile(m_file, DotsText(m_dots));
        return true;
    } catch (const std::exception& error) {
        m_trouble = error.what();
        return false;
    }
}

} // namespace mordhost
