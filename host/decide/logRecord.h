// Log records of the library, taken apart.
#pragma once

#include <optional>
#include <string_view>

namespace mordhost {

// 2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] logger is ready
struct LogRecord {
    std::string_view level;    // "TRACE" or "ERROR"
    std::string_view function; // with its class
    std::string_view message;  // may have several lines

    bool operator==(const LogRecord&) const = default;
};

// Takes apart `text`, one record with or without the carriage return and line feed at its end, and into which the views
// lead. Nothing for a text that does not begin like a record.
std::optional<LogRecord> ParseLogRecord(std::string_view text);

} // namespace mordhost
