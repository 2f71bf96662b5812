// Explanations for people.
#pragma once

#include <string>
#include <vector>

#include "explain/explanation.h"

namespace mordhost {

// For use by one thread.
class ExplanationText {
public:
    // `policy` must outlive this and not change.
    explicit ExplanationText(const Policy& policy) : m_policy(policy), m_rules(policy.rules.size()) {}

    // Appends the explanation as lines, each with the place in the documents that it refers to. Contains no control
    // characters except line feeds.
    void Append(std::string& out, const Explanation& explanation);

private:
    // The lines of a rule that all explanations have in common; empty until its first explanation.
    struct CommonLines {
        std::string head;
        std::string key;
        std::string allowed;
    };

    const CommonLines& LinesOf(const RuleExplanation& explained);

    const Policy& m_policy;
    std::vector<CommonLines> m_rules;
};

// Appends the changes that would allow the event.
void AppendOpenings(std::string& out, const std::vector<Opening>& openings);

// Appends the library's log records of the decision, indented.
void AppendRecords(std::string& out, const WrittenRecords& records);

} // namespace mordhost
