#include "output/allowEntries.h"

namespace mordhost {

AllowEntries::AllowEntries(const Policy&) {}

std::string_view AllowEntries::Find(const Rule& rule, std::string_view machine) const {
    m_key = rule.type == "web" ? rule.guid : rule.type;
    m_key += '\0';
    m_key += machine;
    const auto place = m_places.find(m_key);
    return place == m_places.end() ? std::string_view("null") : place->second;
}

} // namespace mordhost
