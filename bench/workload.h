// One event of a given shape, as a host passes it to the library, and its documents.
//
// No rule matches: the library looks up every machine id of the answer and finds none, the most work that an event can
// take. The event's process is the system process (id 4), whose path is not read.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "shape.h"

namespace bench {

// An allow list of `size` machine ids under the type of all rules. No answer contains any of them.
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

    // The host answers for this workload from now on. Must not be called while events are decided.
    void Select() const;

    // Lets the library decide the event. Returns whether the result is as expected: blocked, without a match. Several
    // threads may call it at once.
    bool Decide(IMordRev& receiver) const;

private:
    class Rule;

    std::vector<std::string> m_guids;
    std::string m_answer;
    std::vector<Rule> m_rules;
    std::vector<IEventRecord*> m_rulePointers;
};

// The host of all workloads. It answers each query with the text of the workload that was selected last. The sink
// discards reports.
IDotHost& Host();
IReportSink& Sink();

// The texts that the host and the sink receive.
struct SeenTexts {
    std::string request;
    std::string report;
};
void KeepTextsIn(SeenTexts* texts); // null: no longer

} // namespace bench
