// One of two policies that are compared.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "compare/brief.h"
#include "policy/connectionEvent.h"

namespace mordhost {

// The events that are decided in one step.
struct EventBatch {
    static constexpr size_t mostEvents = 256;

    std::vector<ConnectionEvent> events; // longer than `count`, to reuse memory
    size_t count = 0;

    // Room for one more event, until there are mostEvents.
    ConnectionEvent& Add() {
        if (count == events.size()) {
            events.emplace_back();
        }
        return events[count++];
    }
};

// A decision in full, for output.
struct Detail {
    std::string record;  // the decision record
    std::string setting; // the mode or action behind the reason, as a JSON object with its place; "null" for none
    std::vector<std::string> missing; // guids of the rules for which the library found no dot
};

// The steps of a batch, in this order. For use by one thread. All functions throw RunError.
class PolicySide {
public:
    virtual ~PolicySide() = default;

    // Starts to decide the events. Does not change `batch`, which must stay unchanged until Finish returns.
    virtual void Begin(const EventBatch& batch) = 0;

    // Returns one brief per event; valid until the next batch.
    virtual const std::vector<Brief>& Finish() = 0;

    // The details of the events of the batch at the indexes `wanted`, in their order; valid until the next call.
    virtual const std::vector<Detail>& Details(const std::vector<size_t>& wanted) = 0;
};

} // namespace mordhost
