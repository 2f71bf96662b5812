// The dots that one policy has used up and the other still has.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "compare/brief.h"
#include "policy/dotTable.h"

namespace mordhost {

enum class Side { before, after };

// A deletion under one policy only.
struct LoneDeletion {
    Side side = Side::before; // the policy under which the dot was deleted
    size_t line = 0;          // of the event
};

class DotDivergence {
public:
    DotDivergence(const DotTable& before, const DotTable& after) : m_before(before), m_after(after) {}

    // Takes the deletions of the next event into account.
    void Add(size_t line, const Brief& before, const Brief& after);

    // The deletion after which the policy of `side` lacks a dot that the other policy still has; null if there is none.
    const LoneDeletion* Find(const std::string& guid, Side side) const;

private:
    void AddDeletion(size_t line, const Brief& brief, Side side, const DotTable& other);

    const DotTable& m_before;
    const DotTable& m_after;
    std::map<std::string, LoneDeletion> m_lone; // by guid
};

} // namespace mordhost
