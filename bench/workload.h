// One event of a given shape, as a host hands it to the library, and the documents that go with it.
//
// No rule matches: every machine id of the answer is looked for in vain, which is the longest way that an event can go.
// The event's process is the system's own (process id 4), which is not looked up.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "shape.h"

namespace bench {

// An allow list of `size` machine ids under the type of all rules; none of them stands in an answer.
std::string AllowListText(uint32_t size);

// The host's side of one event.
class Workload {
public:
    explicit Workload(const Shape& shape);
    ~Workload();
    Workload(const Workload&) = delete;
    Workload& operator=(const Workload&) = delete;

    const std::vector<std::string>& Guids() const { return m_guids; }
    const std::string& Answer() const { return m_answer; }

    // Makes the host answer for this workload from now on. Not while events are being decided.
    void Select() const;

    // Has the library decide the event; true when it was decided as it has to be: blocked, without a match. Several
    // threads may be here at once.
    bool Decide(IMordRev& receiver) const;

private:
    class Rule;

    std::vector<std::string> m_guids;
    std::string m_answer;
    std::vector<Rule> m_rules;
    std::vector<IEventRecord*> m_rulePointers;
};

// The host of all workloads. It answers each query at once with the text of the workload that was selected last, and
// throws reports away.
IDotHost& Host();
IReportSink& Sink();

// The texts that host and sink get, for a look at them.
struct SeenTexts {
    std::string request;
    std::string report;
};
void KeepTextsIn(SeenTexts* texts); // null ends it

} // namespace bench
