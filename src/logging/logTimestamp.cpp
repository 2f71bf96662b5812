#include "logging/logTimestamp.h"

#include <chrono>
#include <string>

namespace {

constexpr std::chrono::hours zoneOffset{8};

// The calendar repeats every 400 years; std::chrono::year covers only 16 bits.
constexpr std::chrono::days cycle{146097};
constexpr int64_t yearsOfCycle = 400;

constexpr int64_t FloorDivide(int64_t number, int64_t divisor) {
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

} // namespace

// A 64-bit division dominates the cost on 32-bit machines: there are only two, and both remainders fit 32 bits.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): m_length limits the text
LogTime::LogTime(int64_t secondsSince1970) {
    constexpr int64_t secondsOfDay = 86400;
    const int64_t time = secondsSince1970 + std::chrono::seconds(zoneOffset).count();
    const int64_t day = FloorDivide(time, secondsOfDay);
    const auto second = static_cast<unsigned>(time - day * secondsOfDay);
    const int64_t cycles = FloorDivide(day, cycle.count());
    const std::chrono::days dayOfCycle{static_cast<int>(day - cycles * cycle.count())};
    const std::chrono::year_month_day date{std::chrono::sys_days{dayOfCycle}};

    AppendYear(yearsOfCycle * cycles + static_cast<int>(date.year()));
    AppendTwoDigits(WIDE('-'), static_cast<unsigned>(date.month()));
    AppendTwoDigits(WIDE('-'), static_cast<unsigned>(date.day()));
    AppendTwoDigits(WIDE(' '), second / 3600);
    AppendTwoDigits(WIDE(':'), second / 60 % 60);
    AppendTwoDigits(WIDE(':'), second % 60);
}

void LogTime::AppendYear(int64_t year) {
    if (year >= 1000 && year <= 9999) {
        for (const int64_t place : {1000, 100, 10, 1}) {
            m_text[m_length++] =
                static_cast<WideChar>('0' + static_cast<unsigned>(year) / static_cast<unsigned>(place) % 10);
        }
        return;
    }
    for (const char digit : std::to_string(year)) { // within the small-string buffer
        m_text[m_length++] = static_cast<WideChar>(digit);
    }
}

void LogTime::AppendTwoDigits(WideChar separator, unsigned number) {
    m_text[m_length++] = separator;
    m_text[m_length++] = static_cast<WideChar>('0' + number / 10);
    m_text[m_length++] = static_cast<WideChar>('0' + number % 10);
}

LogTime LogTimestamp() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return LogTime(std::chrono::floor<std::chrono::seconds>(now).count());
}
