#include "model/libraryRecords.h"

#include <string>

#include "hostKit/logRecords.h"

namespace model {
namespace {

// One byte for each unit, as the siblings' converter widened them.
std::string Narrowed(std::basic_string_view<WideChar> record) {
    std::string bytes;
    for (const WideChar unit : record) {
        if (unit < 0x100) {
            bytes += static_cast<char>(static_cast<unsigned char>(unit));
        } else {
            bytes += "\\w" + std::to_string(static_cast<uint32_t>(unit));
        }
    }
    return bytes;
}

// The part of `text` up to `end`, both taken from it; nothing is found when `end` is missing.
bool TakeUntil(std::string_view& text, std::string_view end, std::string_view& found) {
    const size_t at = text.find(end);
    if (at == std::string_view::npos) {
        return false;
    }
    found = text.substr(0, at);
    text.remove_prefix(at + end.size());
    return true;
}

// The system's reason for a process that could not be opened is not the receiver's affair.
std::string WithoutReason(std::string_view message) {
    constexpr std::string_view words = " ,lasterror=";
    const size_t at = message.find(words);
    if (at == std::string_view::npos) {
        return std::string(message);
    }
    const size_t number = at + words.size();
    const size_t end = message.find_first_not_of("0123456789", number);
    const bool good = number < message.size() && end == std::string_view::npos;
    return std::string(message.substr(0, number)) + (good ? "N" : std::string(message.substr(number)));
}

} // namespace

void LibraryRecords::Take(int32_t level, std::basic_string_view<WideChar> record) {
    const std::string bytes = Narrowed(record);
    const std::string masked = hostKit::MaskRecord(bytes);
    std::string_view rest = masked;
    std::string_view levelName;
    std::string_view file;
    std::string_view function;
    const bool whole = rest.starts_with("TIME [") && TakeUntil(rest, "][", levelName) &&
                       TakeUntil(rest, " LINE][", file) && TakeUntil(rest, "] [THREAD] ", function) &&
                       rest.ends_with("\r\n") && !file.empty() && file.find_first_of("/\\") == std::string_view::npos &&
                       levelName == (level == 30 ? "TIME [TRACE" : "TIME [ERROR") && (level == 30 || level == 35);
    if (!whole) {
        m_trace.Add("not a record, level " + std::to_string(level) + ": " + bytes);
        return;
    }
    rest.remove_suffix(2);
    m_trace.AddLog(level, function,
                   function == "CMordRecv::GetProcPathByPid" ? WithoutReason(rest) : std::string(rest));
}

} // namespace model
