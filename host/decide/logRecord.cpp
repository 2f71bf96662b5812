#include "decide/logRecord.h"

#include <algorithm>

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

bool IsPartOfTime(char c) {
    return (c >= '0' && c <= '9') || c == '-' || c == ':' || c == ' ';
}

bool LooksLikeTime(std::string_view text) {
    return text.size() >= 14 && std::all_of(text.begin(), text.end(), IsPartOfTime);
}

} // namespace

std::optional<LogRecord> ParseLogRecord(std::string_view text) {
    if (text.ends_with(lineEnd)) {
        text.remove_suffix(lineEnd.size());
    }
    const auto time = TakeUntil(text, " [");
    if (!time || !LooksLikeTime(*time)) {
        return {};
    }
    const auto level = TakeUntil(text, "][");
    const auto site = level ? TakeUntil(text, "][") : level;
    const auto function = site ? TakeUntil(text, "] [") : site;
    const auto thread = function ? TakeUntil(text, "] ") : function;
    if (!thread || (*level != "TRACE" && *level != "ERROR")) {
        return {};
    }
    return LogRecord{*level, *function, text};
}

} // namespace mordhost
