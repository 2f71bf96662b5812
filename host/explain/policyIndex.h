// Look-ups in a policy.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "policy/policy.h"

namespace mordhost {

// The results are parts of the policy, which must outlive this and not change. Of repeated entries of the allow list
// the first counts, of repeated rows of the action table the last.
class PolicyIndex {
public:
    using Entries = std::vector<const AllowListEntry*>;

    explicit PolicyIndex(const Policy& policy);

    // The machines that are allowed under the key, in document order.
    const Entries& AllowedUnder(const std::string& key) const;

    // The entry of the machine under the key, or null.
    const AllowListEntry* FindAllowed(const std::string& key, const std::string& machine) const;

    // The entries of the machine, one per key.
    const Entries& AllowedOf(const std::string& machine) const;

    // The entries whose machine differs from `machine` in case or blanks only.
    Entries SimilarAllowed(const std::string& machine) const;

    // The row of the type, or null.
    const ActionRow* ActionOf(const std::string& type) const;

    // The guids of the dots in the documents that differ from `guid` in case or blanks only, with their places.
    using Dots = std::vector<const std::pair<const std::string, DocumentPlace>*>;
    Dots SimilarDots(const std::string& guid) const;

private:
    std::unordered_map<std::string_view, Entries> m_byKey;
    std::unordered_map<std::string_view, Entries> m_byMachine;
    std::unordered_map<std::string, Entries> m_byForm; // of the first entry of each machine
    std::unordered_map<std::string_view, const ActionRow*> m_actions;
    std::unordered_map<std::string, Dots> m_dotsByForm;
};

} // namespace mordhost
