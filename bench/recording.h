// A long recording for mordhost, and the policy under which it is replayed.
#pragma once

#include <cstdint>
#include <filesystem>

namespace bench {

constexpr auto policyFileName = "policy.json";
constexpr auto eventsFileName = "events.jsonl";

// Writes both into `folder`. The same count gives the same bytes. Throws std::runtime_error.
//
// Of a hundred events about 20 are disconnects, 12 meet a failure that the policy prescribes (10 of them the network
// error), 4 meet no rule, 20 meet several rules, and the rest meets one: it has no dot, a dot of machines that are not
// allowed, or, for one event in a hundred, a dot that lets it in. A dot serves once and a rule has one, so that there
// are as many such rules as such events. The processes of the events are gone.
void WriteRecording(const std::filesystem::path& folder, uint32_t eventCount);

} // namespace bench
