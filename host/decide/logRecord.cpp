#include "decide/logRecord.h"

#include <optional>

namespace mordhost {

namespace {

constexpr std::string_view lineEnd = "\r\n";

// Takes what stands before `mark` off the front of `text`, and the mark; nothing when there is no mark.
std::optional<std::string_view> TakeUntil(std::string_view& text, std::string_view mark) {
    const size_t place = text.find(mark);
    if (place == std::string_view::npos) {
        return {};
    }
    const std::string_view taken = text.substr(0, place);
    text.remove_prefix(place + mark.size());
    return taken;
}

bool LooksLikeTime(std::string_view text) {
    return text.size() >= 14 && text.find_first_not_of("0123456789-: ") == std::string_view::npos;
}

// One line, or the first line of a record.
std::optional<LogRecord> ParseHead(std::string_view line) {
    const auto time = TakeUntil(line, " [");
    if (!time || !LooksLikeTime(*time)) {
        return {};
    }
    const auto level = TakeUntil(line, "][");
    const auto site = level ? TakeUntil(line, "][") : level;
    const auto function = site ? TakeUntil(line, "] [") : site;
    const auto thread = function ? TakeUntil(line, "] ") : function;
    if (!thread || (*level != "TRACE" && *level != "ERROR")) {
        return {};
    }
    return LogRecord{std::string(*level), std::string(*function), std::string(line)};
}

} // namespace

std::vector<LogRecord> ParseLogRecords(std::string_view text) {
    std::vector<LogRecord> records;
    while (!text.empty()) {
        std::string_view rest = text;
        const std::string_view line = TakeUntil(rest, lineEnd).value_or(text);
        text = line.size() == text.size() ? std::string_view() : rest;
        if (auto record = ParseHead(line)) {
            records.push_back(std::move(*record));
        } else if (!records.empty()) {
            records.back().message += lineEnd;
            records.back().message += line;
        }
    }
    return records;
}

} // namespace mordhost
