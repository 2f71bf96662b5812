// Answers the queries of the library from a dot store.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "policy/dotStore.h"

namespace mordhost {

// The value of a dot in an answer: {"value":1,"mid":{"MID-1":1,"MID-2":1}}.
std::string DotValue(const std::set<std::string>& mids);

// For use by one thread.
class DotQuery {
public:
    // Does not own the store.
    explicit DotQuery(DotStore& store);
    ~DotQuery();
    DotQuery(const DotQuery&) = delete;
    DotQuery& operator=(const DotQuery&) = delete;

    // Answers `request`, {"guid": ["GUID-1", …]}. Writes the query result to `answer`: an object with a member for each
    // guid that has a dot, {"GUID-1":{"value":1,"mid":{"MID-1":1}}}, in the order of the request and without
    // repetitions. Fails for a text that is not a request. `answer` is valid until the next call.
    DotStore::Result Answer(const char* request, std::string_view& answer);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace mordhost
