// Explanations as JSON (docs/schema/explanation.schema.json).
#pragma once

#include <string>
#include <vector>

#include "explain/explanation.h"
#include "output/decisionRecord.h"

namespace mordhost {

// The most machine ids of an allow list that one explanation lists.
constexpr size_t greatestAllowedMachines = 10;

// What an explanation has beside the decision.
struct ExplanationExtras {
    const std::vector<Opening>* openings = nullptr; // null: none were tried
    bool records = false;                           // whether the library's log records follow
};

// Appends {"decision":…,"explanation":…}, without a line end. `records` serialises the decision.
void AppendExplanationJson(std::string& out, const Explanation& explanation, const Policy& policy,
                           const DecisionRecords& records, const ExplanationExtras& extras);

} // namespace mordhost
