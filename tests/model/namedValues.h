// A few values, each under a name that is a literal.
#pragma once

#include <cstring>
#include <utility>
#include <vector>

namespace model {

template <typename Value>
class NamedValues {
public:
    using Entry = std::pair<const char*, Value>;

    // The value of that name, made when there is none.
    Value& operator[](const char* name) {
        for (Entry& entry : m_entries) {
            if (std::strcmp(entry.first, name) == 0) {
                return entry.second;
            }
        }
        return m_entries.emplace_back(name, Value()).second;
    }

    // Null when there is none.
    const Value* Find(const char* name) const {
        for (const Entry& entry : m_entries) {
            if (std::strcmp(entry.first, name) == 0) {
                return &entry.second;
            }
        }
        return nullptr;
    }

    void Erase(const char* name) {
        std::erase_if(m_entries, [name](const Entry& entry) { return std::strcmp(entry.first, name) == 0; });
    }

    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    std::vector<Entry> m_entries;
};

} // namespace model
