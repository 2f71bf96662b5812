// Explains decisions.
#pragma once

#include "explain/allowedMachines.h"
#include "explain/explanation.h"
#include "explain/heldDots.h"

namespace mordhost {

// Derives nothing that the library decides: verdict, reason and outcomes are those of the decision. For use by one
// thread.
class Explainer {
public:
    // Indexes the allow list and the action table. `policy` must outlive this and not change.
    explicit Explainer(const Policy& policy);

    const AllowedMachines& Allowed() const { return m_allowed; }

    // The explanation of a decision under the policy. `held` is the store of the decision, before another query. The
    // result refers to `decision`.
    Explanation Explain(const Decision& decision, const HeldDots& held) const;

private:
    RuleExplanation ExplainRule(const Decision& decision, size_t rule, const HeldDots& held) const;
    void ExplainModes(const Decision& decision, Explanation& explanation) const;

    const Policy& m_policy;
    const AllowedMachines m_allowed;
    std::unordered_map<std::string_view, const ActionRow*> m_actions; // the row that counts, by type
};

} // namespace mordhost
