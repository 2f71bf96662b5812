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
    // The calendar repeats after 400 years; the library's own knows 16-bit years only.
    constexpr std::chrono::days cycle{146097};
    const std::chrono::seconds time = std::chrono::seconds{secondsSince1970} + zoneOffset;
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::hh_mm_ss clock{time - day};
    const auto cycles = std::chrono::floor<std::chrono::duration<int64_t, std::ratio<146097LL * 86400>>>(time).count();
    const std::chrono::year_month_day date{std::chrono::sys_days{day - cycles * cycle}};

    char text[64];
    const int length = std::snprintf(
        text, sizeof text, "%lld-%02u-%02u %02d:%02d:%02d", 400LL * cycles + static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
        static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
    return {text, text + length};
}
