// Explanations for people.
#pragma once

#include <string>
#include <vector>

#include "explain/explanation.h"

namespace mordhost {

// Appends the explanation as lines, each with the place in the documents that it refers to. Contains no control
// characters except line feeds.
void AppendExplanation(std::string& out, const Explanation& explanation, const Policy& policy);

// Appends the changes that would allow the event.
void AppendOpenings(std::string& out, const std::vector<Opening>& openings);

// Appends the library's log records of the decision, indented.
void AppendRecords(std::string& out, const WrittenRecords& records);

} // namespace mordhost
