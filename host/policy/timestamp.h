// Times of events: UTC, "2025-11-20T09:54:12.345Z".
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace mordhost {

// Holds every year from 0 to 9999. The clock's own type, with nanoseconds in 64 bits, ends in the year 2262.
using UtcTime = std::chrono::sys_time<std::chrono::milliseconds>;

// The current time.
UtcTime UtcNow();

// The time, or nullopt if `text` is not such a text. The fraction of a second is optional; digits after the millisecond
// do not count.
std::optional<UtcTime> ParseTimestamp(std::string_view text);

// Whether `text` is such a time.
inline bool IsTimestamp(std::string_view text) {
    return ParseTimestamp(text).has_value();
}

// The text of `time`.
std::string Timestamp(UtcTime time);

// The time of day in milliseconds, "09:54:12.345"; "-" for an empty `timestamp`.
std::string TimeOfDay(std::string_view timestamp);

} // namespace mordhost
