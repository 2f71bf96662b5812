// The library's object, set up by a policy and asked for decisions.
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "events/connectionEvent.h"
#include "frame/interfaces.h"
#include "library/records.h"
#include "policy/policy.h"

namespace mordhost {

// What HandleEvent gave.
struct Answer {
    uint32_t reply = 0;
    bool settled = false; // its result: whether the event went as foreseen
    std::chrono::nanoseconds duration{};
};

// For one thread, and one in a process, as the object is. While it lives, the library holds the host and the sink.
class Receiver {
public:
    // Initialises the object, sets it up by `policy` and opens its gate. `policy` must outlive this. Throws LoadError
    // when the object does not come up, DocumentError when it refuses a document.
    Receiver(IMordRev& object, const Policy& policy, IDotHost& host, IReportSink& sink);
    ~Receiver();
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    // Hands over the event with those of the policy's rules whose places `rules` holds, one at least.
    Answer Decide(const ConnectionEvent& event, const std::vector<size_t>& rules);

private:
    IMordRev& m_object;
    std::vector<RuleRecord> m_rules; // in the order of the policy
    std::vector<IEventRecord*> m_chosen;
};

} // namespace mordhost
