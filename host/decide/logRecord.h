// Log records of the library, taken apart.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mordhost {

// 2026-11-16 14:03:07 [TRACE][mordRev.cpp 637][CMordRecv::InitLogMoudle] [4312] logger is ready
struct LogRecord {
    std::string level;    // "TRACE" or "ERROR"
    std::string function; // with its class
    std::string message;  // may have several lines

    bool operator==(const LogRecord&) const = default;
};

// The records in `text`, each ended by carriage return and line feed. A piece that does not begin like a record belongs
// to the message before it; one at the very beginning is passed over.
std::vector<LogRecord> ParseLogRecords(std::string_view text);

} // namespace mordhost
