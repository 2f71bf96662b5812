// A long recording for mordhost, with its policy.
#pragma once

#include <cstdint>
#include <filesystem>

namespace bench {

constexpr auto policyFileName = "policy.json";
constexpr auto eventsFileName = "events.jsonl";

// Writes both into `folder`. The same count gives the same bytes. Throws std::runtime_error.
//
// Of a hundred events about 20 are disconnects, for 12 the query fails as the policy prescribes (10 network errors), to
// 4 no rule applies, to 20 several rules apply, and to the rest one rule applies. It has no dot, a dot of machines that
// are not allowed, or, for one event in a hundred, a dot that allows it. A rule has one dot, which is used once;
// therefore there are as many such rules as such events. The processes of the events have ended.
void WriteRecording(const std::filesystem::path& folder, uint32_t eventCount);

} // namespace bench
