// Dots in memory, loaded from a table and, if wished, written back to a file.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "dots/dotStore.h"
#include "dots/dotTable.h"

namespace mordhost {

// For one thread.
class MemoryDotStore final : public DotStore {
public:
    // When `file` is not empty, it holds the dots that are left, from the first deletion on; it is replaced as a whole
    // at each deletion, so that it is never found half written.
    explicit MemoryDotStore(DotTable dots, std::string file = {});
    MemoryDotStore(const MemoryDotStore&) = delete;
    MemoryDotStore& operator=(const MemoryDotStore&) = delete;

    const std::string* Find(std::string_view guid) const override;
    bool Delete(const std::string& guid) noexcept override;
    size_t Size() const override { return m_dots.size(); }
    const std::string& Trouble() const override { return m_trouble; }

private:
    // Of texts and of views of texts alike.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    DotTable m_dots;
    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> m_members; // of answers, one for each dot
    std::string m_file;
    std::string m_trouble;
};

} // namespace mordhost
