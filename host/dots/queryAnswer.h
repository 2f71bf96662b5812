// The answer to a query of dots.
#pragma once

#include <set>
#include <string>

#include "dots/dotStore.h"

namespace mordhost {

// What a dot makes of an answer: its member, "GUID-1": {"value": 1, "mid": {"MID-1": 1, …}}, without white space.
std::string AnswerMember(const std::string& guid, const std::set<std::string>& mids);

// Answers the query request `request`, {"guid": ["GUID-1", …]}, in the format of the query result: for each guid under
// which there is a dot, once and in the order of the request, {"GUID-1": {"value": 1, "mid": {"MID-1": 1, …}}, …}. A
// guid without a dot has no member. The answer goes into `answer`. Returns false for a text that is no query request.
bool AnswerQuery(const DotStore& store, const char* request, std::string& answer);

} // namespace mordhost
