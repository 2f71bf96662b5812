#include "policy/timestamp.h"

#include <algorithm>
#include <cstdio>

namespace mordhost {

namespace {

constexpr std::string_view wholeSeconds = "dddd-dd-ddTdd:dd:dd"; // d stands for a digit
constexpr size_t dayLength = 11;                                 // "2025-11-20T"

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

int NumberAt(std::string_view text, size_t place, size_t digits) {
    int number = 0;
    for (const char c : text.substr(place, digits)) {
        number = number * 10 + (c - '0');
    }
    return number;
}

} // namespace

UtcTime UtcNow() {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

std::optional<UtcTime> ParseTimestamp(std::string_view text) {
    if (text.size() <= wholeSeconds.size() || text.back() != 'Z') {
        return std::nullopt;
    }
    for (size_t i = 0; i < wholeSeconds.size(); ++i) {
        if (wholeSeconds[i] == 'd' ? !IsDigit(text[i]) : text[i] != wholeSeconds[i]) {
            return std::nullopt;
        }
    }
    const std::string_view fraction = text.substr(wholeSeconds.size(), text.size() - wholeSeconds.size() - 1);
    if (!fraction.empty() && (fraction.front() != '.' || fraction.size() == 1 ||
                              !std::all_of(fraction.begin() + 1, fraction.end(), IsDigit))) {
        return std::nullopt;
    }
    const std::chrono::year_month_day day{std::chrono::year(NumberAt(text, 0, 4)),
                                          std::chrono::month(static_cast<unsigned>(NumberAt(text, 5, 2))),
                                          std::chrono::day(static_cast<unsigned>(NumberAt(text, 8, 2)))};
    const int hour = NumberAt(text, 11, 2);
    const int minute = NumberAt(text, 14, 2);
    const int second = NumberAt(text, 17, 2); // 60 in a leap second
    if (!day.ok() || hour >= 24 || minute >= 60 || second > 60) {
        return std::nullopt;
    }
    int milliseconds = 0;
    for (size_t digit = 1, worth = 100; digit < fraction.size() && worth > 0; ++digit, worth /= 10) {
        milliseconds += (fraction[digit] - '0') * static_cast<int>(worth);
    }
    return std::chrono::sys_days(day) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second) + std::chrono::milliseconds(milliseconds);
}

std::string Timestamp(UtcTime time) {
    using namespace std::chrono;
    const auto midnight = floor<days>(time);
    const year_month_day day(midnight);
    const hh_mm_ss clock(time - midnight);
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return text;
}

std::string TimeOfDay(std::string_view timestamp) {
    if (timestamp.size() <= wholeSeconds.size()) {
        return "-";
    }
    std::string clock(timestamp.substr(dayLength, timestamp.size() - dayLength - 1));
    constexpr size_t shown = 12; // "09:54:12.345"
    if (clock.size() < shown) {
        clock += clock.find('.') == std::string::npos ? "." : "";
        clock.resize(shown, '0');
    }
    clock.resize(shown);
    return clock;
}

} // namespace mordhost
