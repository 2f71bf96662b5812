// Times of events: UTC, "2025-11-20T09:54:12.345Z".
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace mordhost {

// Whether `text` is such a time, with or without a fraction of a second.
bool IsTimestamp(std::string_view text);

// `time` to the millisecond.
std::string Timestamp(std::chrono::system_clock::time_point time);

// The time of day to the millisecond, "09:54:12.345"; "-" where `timestamp` is empty.
std::string TimeOfDay(std::string_view timestamp);

} // namespace mordhost
