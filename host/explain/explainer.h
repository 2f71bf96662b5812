// Explains decisions.
#pragma once

#include "explain/explanation.h"
#include "explain/heldDots.h"
#include "explain/policyIndex.h"

namespace mordhost {

// Derives nothing that the library decides: verdict, reason and outcomes are those of the decision. For use by one
// thread.
class Explainer {
public:
    // `policy` must outlive this and not change.
    explicit Explainer(const Policy& policy) : m_policy(policy), m_index(policy) {}

    // The explanation of a decision under the policy. `held` is the store of the decision, before another query. The
    // result refers to `decision`.
    Explanation Explain(const Decision& decision, const HeldDots& held) const;

private:
    RuleExplanation ExplainRule(const Decision& decision, size_t rule, const HeldDots& held) const;
    void ExplainModes(const Decision& decision, Explanation& explanation) const;

    const Policy& m_policy;
    const PolicyIndex m_index;
};

} // namespace mordhost
