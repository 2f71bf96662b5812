// The library's object, configured by a policy.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "decide/records.h"
#include "frame/interfaces.h"
#include "policy/connectionEvent.h"
#include "policy/policy.h"

namespace mordhost {

// The results of HandleEvent.
struct Answer {
    uint32_t reply = 0;
    bool settled = false; // its return value
    std::chrono::nanoseconds duration{};
};

// At most one per process, like the object of the library, and for use by one thread. The library uses the host and the
// sink until the destructor returns.
class Receiver {
public:
    // Initialises, configures and starts the object. `policy` must outlive this. Throws LoadError if the object cannot
    // be initialised, and DocumentError if it refuses a document.
    Receiver(IMordRev& object, const Policy& policy, IDotHost& host, IReportSink& sink);
    ~Receiver();
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    // Sets the defender mode of the object. Throws LoadError if it refuses.
    void SetDefenderMode(uint32_t mode);

    // Replaces the allow list of the object. Throws LoadError if it refuses.
    void SetAllowList(const std::string& document);

    // Sets the exception mode of the object. Throws LoadError if it refuses.
    void SetExceptionMode(uint32_t mode);

    // Passes the event to the object, with the rules at the indexes `rules`, of which there is at least one.
    Answer Decide(const ConnectionEvent& event, const std::vector<size_t>& rules);

private:
    IMordRev& m_object;
    std::vector<RuleRecord> m_rules; // in the order of the policy
    std::vector<IEventRecord*> m_chosen;
};

} // namespace mordhost
