#include "logging/logTimestamp.h"

#include <chrono>
#include <cstdio>

namespace {

constexpr std::chrono::hours zoneOffset{8};

} // namespace

std::basic_string<WideChar> LogTimestamp() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return FormatLogTimestamp(std::chrono::floor<std::chrono::seconds>(now).count());
}

std::basic_string<WideChar> FormatLogTimestamp(int64_t secondsSince1970) {
    const std::chrono::sys_seconds time{std::chrono::seconds{secondsSince1970} + zoneOffset};
    const auto midnight = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{midnight};
    const std::chrono::hh_mm_ss clock{time - midnight};

    char text[64];
    const int length = std::snprintf(text, sizeof text, "%d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                                     static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                                     static_cast<int>(clock.seconds().count()));
    return {text, text + length};
}
