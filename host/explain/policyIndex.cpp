#include "explain/policyIndex.h"

#include <algorithm>

#include "review/similarIds.h"

namespace mordhost {

namespace {

const PolicyIndex::Entries noEntries;

template <typename Map, typename Key>
const PolicyIndex::Entries& EntriesOf(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found == map.end() ? noEntries : found->second;
}

} // namespace

PolicyIndex::PolicyIndex(const Policy& policy) {
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
    for (const ActionRow& row : policy.actionRows) {
        m_actions[row.type] = &row;
    }
    for (const auto& dot : policy.dotPlaces) {
        m_dotsByForm[WithoutCaseAndBlanks(dot.first)].push_back(&dot);
    }
}

const PolicyIndex::Entries& PolicyIndex::AllowedUnder(const std::string& key) const {
    return EntriesOf(m_byKey, key);
}

const AllowListEntry* PolicyIndex::FindAllowed(const std::string& key, const std::string& machine) const {
    const Entries& entries = AllowedOf(machine);
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&key](const auto* entry) { return entry->key == key; });
    return found == entries.end() ? nullptr : *found;
}

const PolicyIndex::Entries& PolicyIndex::AllowedOf(const std::string& machine) const {
    return EntriesOf(m_byMachine, machine);
}

PolicyIndex::Entries PolicyIndex::SimilarAllowed(const std::string& machine) const {
    Entries similar = EntriesOf(m_byForm, WithoutCaseAndBlanks(machine));
    std::erase_if(similar, [&machine](const auto* entry) { return entry->mid == machine; });
    return similar;
}

const ActionRow* PolicyIndex::ActionOf(const std::string& type) const {
    const auto row = m_actions.find(type);
    return row == m_actions.end() ? nullptr : row->second;
}

PolicyIndex::Dots PolicyIndex::SimilarDots(const std::string& guid) const {
    const auto found = m_dotsByForm.find(WithoutCaseAndBlanks(guid));
    Dots similar = found == m_dotsByForm.end() ? Dots() : found->second;
    std::erase_if(similar, [&guid](const auto* dot) { return dot->first == guid; });
    return similar;
}

} // namespace mordhost
