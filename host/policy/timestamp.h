// Times of events: UTC, "2025-11-20T09:54:12.345Z".
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace mordhost {

// Whether `text` is such a time. The fraction of a second is optional.
bool IsTimestamp(std::string_view text);

// The text of `time`, in milliseconds.
std::string Timestamp(std::chrono::system_clock::time_point time);

// The time of day in milliseconds, "09:54:12.345"; "-" for an empty `timestamp`.
std::string TimeOfDay(std::string_view timestamp);

} // namespace mordhost
