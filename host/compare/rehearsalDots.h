// The dots of a rehearsal.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "policy/dotTable.h"
#include "policy/memoryDotStore.h"

namespace mordhost {

// Several stores that begin with the same dots. One of them is selected at a time. Memory for a store grows only with
// the dots that were deleted in it.
class RehearsalDots final : public DotStore {
public:
    RehearsalDots(const DotTable& dots, size_t stores) : m_dots(dots), m_deleted(stores) {}

    // Selects a store. If `isEmpty`, it holds nothing until the next call.
    void Select(size_t store, bool isEmpty) {
        m_selected = store;
        m_isEmpty = isEmpty;
    }

    Result Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) override;
    bool Delete(const std::string& guid) noexcept override;
    size_t Size() const override { return m_isEmpty ? 0 : m_dots.Size() - m_deleted[m_selected].size(); }
    const std::string& Trouble() const override { return m_dots.Trouble(); }

private:
    // Allows look-ups by string_view.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    MemoryDotStore m_dots;                                                         // all
    std::vector<std::unordered_set<std::string, Hash, std::equal_to<>>> m_deleted; // guids, by store
    size_t m_selected = 0;
    bool m_isEmpty = false;
    std::vector<const std::string*> m_found; // a member, to reuse its memory
};

} // namespace mordhost
