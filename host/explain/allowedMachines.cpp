#include "explain/allowedMachines.h"

#include <algorithm>

#include "review/similarIds.h"

namespace mordhost {

namespace {

const AllowedMachines::Entries noEntries;

template <typename Map, typename Key>
const AllowedMachines::Entries& EntriesOf(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found == map.end() ? noEntries : found->second;
}

} // namespace

const std::string& ProtocolKeyOf(const Rule& rule) {
    return rule.type == "web" ? rule.guid : rule.type;
}

AllowedMachines::AllowedMachines(const Policy& policy) {
    for (const AllowListEntry& entry : policy.allowListEntries) {
        Entries& ofMachine = m_byMachine[entry.mid];
        if (ofMachine.empty()) {
            m_byForm[WithoutCaseAndBlanks(entry.mid)].push_back(&entry);
        }
        const bool isRepeated = std::any_of(ofMachine.begin(), ofMachine.end(),
                                            [&entry](const auto* known) { return known->key == entry.key; });
        if (!isRepeated) {
            ofMachine.push_back(&entry);
            m_byKey[entry.key].push_back(&entry);
        }
    }
}

const AllowedMachines::Entries& AllowedMachines::Under(const std::string& key) const {
    return EntriesOf(m_byKey, key);
}

const AllowListEntry* AllowedMachines::Find(const std::string& key, const std::string& machine) const {
    const Entries& entries = Of(machine);
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&key](const auto* entry) { return entry->key == key; });
    return found == entries.end() ? nullptr : *found;
}

const AllowedMachines::Entries& AllowedMachines::Of(const std::string& machine) const {
    return EntriesOf(m_byMachine, machine);
}

AllowedMachines::Entries AllowedMachines::Similar(const std::string& machine) const {
    Entries similar = EntriesOf(m_byForm, WithoutCaseAndBlanks(machine));
    std::erase_if(similar, [&machine](const auto* entry) { return entry->mid == machine; });
    return similar;
}

} // namespace mordhost
