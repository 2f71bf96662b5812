// The decision record: a decision as one JSON object (docs/schema/decision.schema.json).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "decide/decision.h"
#include "output/allowEntries.h"
#include "policy/policy.h"

namespace mordhost {

// What all records of a run have in common.
struct RecordContext {
    std::string libraryVersion; // empty if unknown
    std::string hostVersion;
    bool durations = true; // if false, the records have no durations and those of equal runs are equal
};

// For use by one thread.
class DecisionRecords {
public:
    // Serialises what does not depend on the decision. `policy` must outlive this.
    DecisionRecords(const Policy& policy, const RecordContext& context);

    // Appends the record, without a line end.
    void Append(std::string& out, const Decision& decision) const;

private:
    void AppendRules(std::string& out, const Decision& decision) const;
    void AppendAllowedBy(std::string& out, const Decision& decision) const;

    const Policy& m_policy;
    const AllowEntries m_allowEntries;
    const bool m_durations;
    std::vector<std::string> m_rules; // the constant members of each rule
    std::string m_constants;          // the constant members of a record
};

} // namespace mordhost
