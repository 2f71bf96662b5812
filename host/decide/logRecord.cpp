#include "decide/logRecord.h"

namespace mordhost {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view beforeThread = "] [";
constexpr std::string_view afterThread = "] ";

} // namespace

std::optional<std::string_view> MessageOf(std::string_view record) {
    if (record.ends_with(lineEnd)) {
        record.remove_suffix(lineEnd.size());
    }
    const size_t thread = record.find(beforeThread);
    const size_t end = thread == std::string_view::npos ? thread : record.find(afterThread, thread + 1);
    if (end == std::string_view::npos) {
        return {};
    }
    return record.substr(end + afterThread.size());
}

} // namespace mordhost
