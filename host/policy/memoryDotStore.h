// A dot store in memory that optionally writes the remaining dots to a file.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "policy/dotStore.h"
#include "policy/dotTable.h"

namespace mordhost {

class MemoryDotStore final : public DotStore {
public:
    // If `file` is not empty, each deletion replaces it by the remaining dots before Delete returns. The file is never
    // incomplete (replaceFile.h).
    explicit MemoryDotStore(DotTable dots, std::string file = {});
    MemoryDotStore(const MemoryDotStore&) = delete;
    MemoryDotStore& operator=(const MemoryDotStore&) = delete;

    Result Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) override;
    bool Delete(const std::string& guid) noexcept override;
    size_t Size() const override { return m_dots.size(); }
    const std::string& Trouble() const override { return m_trouble; }

    const DotTable& Dots() const { return m_dots; }

    // The machine ids of the dot of `guid`, or null if there is no dot. Valid until the next Delete.
    const std::set<std::string>* Machines(const std::string& guid) const;

private:
    // Allows look-ups by string_view.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    DotTable m_dots;
    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> m_values; // DotValue of each dot, by guid
    std::string m_file;
    std::string m_trouble;
};

} // namespace mordhost
