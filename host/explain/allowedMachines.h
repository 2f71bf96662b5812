// The machines of an allow list, by protocol key and by id.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "policy/policy.h"

namespace mordhost {

// The protocol key under which the allow list must have a machine for the rule: the guid of a web rule, otherwise the
// type.
const std::string& ProtocolKeyOf(const Rule& rule);

// Of repeated entries the first counts. The entries are those of the policy, which must outlive this and not change.
class AllowedMachines {
public:
    using Entries = std::vector<const AllowListEntry*>;

    explicit AllowedMachines(const Policy& policy);

    // The machines that are allowed under the key, in document order.
    const Entries& Under(const std::string& key) const;

    // The entry of the machine under the key, or null.
    const AllowListEntry* Find(const std::string& key, const std::string& machine) const;

    // The entries of the machine, one per key.
    const Entries& Of(const std::string& machine) const;

    // The entries whose machine differs from `machine` in case or blanks only.
    Entries Similar(const std::string& machine) const;

private:
    std::unordered_map<std::string_view, Entries> m_byKey;
    std::unordered_map<std::string_view, Entries> m_byMachine;
    std::unordered_map<std::string, Entries> m_byForm; // of the first entry of each machine
};

} // namespace mordhost
