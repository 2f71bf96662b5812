#include "dots/memoryDotStore.h"

#include <exception>
#include <utility>

#include "document/replaceFile.h"

namespace mordhost {

MemoryDotStore::MemoryDotStore(DotTable dots, std::string file) : m_dots(std::move(dots)), m_file(std::move(file)) {}

const std::set<std::string>* MemoryDotStore::Find(const std::string& guid) const {
    const auto dot = m_dots.find(guid);
    return dot == m_dots.end() ? nullptr : &dot->second;
}

bool MemoryDotStore::Delete(const std::string& guid) noexcept {
    if (m_dots.erase(guid) == 0) {
        return false;
    }
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
