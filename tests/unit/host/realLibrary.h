// Decides events with the real library, without files.
#pragma once

#include <string>
#include <vector>

#include "policy/policyReader.h"

namespace mordhostTest {

// The codes of the warnings and errors of the policy, after a check. Expects that the library agrees.
std::vector<std::string> CodesOf(const std::string& policy);

// What the library does with connections to the local ports 1 to 9 under the policy: the verdicts and the deleted dots,
// as one text. All dots remain, so that no decision changes a later one.
std::string DecisionsOf(const std::string& policy);

// The replies for the rules A, B and C, of different types, when every query has this answer. The machine M is allowed
// under each of their types.
std::string DecisionsForAnswer(const std::string& answer);

// The policy as read from this text.
mordhost::PolicyReading ReadingOf(const std::string& policy);

} // namespace mordhostTest
