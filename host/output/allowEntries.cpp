#include "output/allowEntries.h"

#include "output/placeMembers.h"
#include "policy/ruleKey.h"

namespace mordhost {

namespace {

std::string PlaceObject(const DocumentPlace& place) {
    std::string text = "{";
    JsonMembers members(text);
    AppendPlace(members, place);
    return text + '}';
}

} // namespace

AllowEntries::AllowEntries(const Policy& policy) {
    for (const AllowListEntry& entry : policy.allowListEntries) {
        std::string pair = entry.key + '\0' + entry.mid;
        if (!m_places.contains(pair)) { // the first entry counts
            m_places.emplace(std::move(pair), PlaceObject(entry.keyPlace));
        }
    }
}

std::string_view AllowEntries::Find(const Rule& rule, std::string_view machine) const {
    m_key = KeyOf(rule);
    m_key += '\0';
    m_key += machine;
    const auto place = m_places.find(m_key);
    return place == m_places.end() ? std::string_view("null") : place->second;
}

} // namespace mordhost
