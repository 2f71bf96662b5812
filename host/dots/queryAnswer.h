// The answer to a query of dots.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "dots/dotStore.h"

namespace mordhost {

// What a dot makes of an answer: its member, "GUID-1": {"value": 1, "mid": {"MID-1": 1, …}}, without white space.
std::string AnswerMember(const std::string& guid, const std::set<std::string>& mids);

// Answers queries from a store, which it does not own. For one thread.
class QueryAnswerer {
public:
    explicit QueryAnswerer(const DotStore& store) : m_store(store) {}

    // The answer to the query request `request`, {"guid": ["GUID-1", …]}, in the format of the query result: for each
    // guid under which there is a dot, once and in the order of the request, {"GUID-1": {"value": 1, "mid": {"MID-1":
    // 1, …}}, …}. A guid without a dot has no member. Null for a text that is no query request. Valid until the next
    // call.
    const std::string* Answer(const char* request);

private:
    class Handler;

    const DotStore& m_store;
    std::string m_request; // which the parse spoils
    std::string m_answer;
    std::vector<const std::string*> m_given; // members that stand in the answer
};

} // namespace mordhost
