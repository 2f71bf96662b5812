// The places of allow-list entries in their document.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "policy/policy.h"

namespace mordhost {

class AllowEntries {
public:
    explicit AllowEntries(const Policy& policy);

    // The place of the first entry that allows `machine` for `rule`, as a JSON object; "null" if there is none. Valid
    // as long as this.
    std::string_view Find(const Rule& rule, std::string_view machine) const;

private:
    // Allows look-ups by string_view.
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    // By protocol key and machine id, separated by a NUL, which neither contains.
    std::unordered_map<std::string, std::string, Hash, std::equal_to<>> m_places;
    mutable std::string m_key; // of a look-up; a member, to reuse its memory
};

} // namespace mordhost
