#include "policy/memoryDotStore.h"

#include <exception>
#include <utility>

#include "policy/dotQuery.h"
#include "system/replaceFile.h"

namespace mordhost {

MemoryDotStore::MemoryDotStore(DotTable dots, std::string file) : m_dots(std::move(dots)), m_file(std::move(file)) {
    for (const auto& [guid, mids] : m_dots) {
        m_values.emplace(guid, DotValue(mids));
    }
}

DotStore::Result MemoryDotStore::Find(const std::vector<std::string_view>& guids,
                                      std::vector<const std::string*>& dots) {
    dots.clear();
    for (const std::string_view guid : guids) {
        const auto value = m_values.find(guid);
        dots.push_back(value == m_values.end() ? nullptr : &value->second);
    }
    return Result::answered;
}

bool MemoryDotStore::Delete(const std::string& guid) noexcept {
    if (m_dots.erase(guid) == 0) {
        return false;
    }
    m_values.erase(guid);
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

const std::set<std::string>* MemoryDotStore::Machines(const std::string& guid) const {
    const auto dot = m_dots.find(guid);
    return dot == m_dots.end() ? nullptr : &dot->second;
}

} // namespace mordhost
