#include "model/libraryRecord.h"

#include <algorithm>

namespace model {
namespace {

bool DecimalDigit(char c) {
    return c >= '0' && c <= '9';
}

// Removes `form` from the beginning of `text`; 9 matches any digit.
bool TakeForm(std::string_view& text, std::string_view form) {
    if (text.size() < form.size()) {
        return false;
    }
    for (size_t i = 0; i < form.size(); ++i) {
        if (form[i] == '9' ? !DecimalDigit(text[i]) : text[i] != form[i]) {
            return false;
        }
    }
    text.remove_prefix(form.size());
    return true;
}

// One digit or more.
bool TakeNumber(std::string_view& text) {
    const size_t length = static_cast<size_t>(std::find_if_not(text.begin(), text.end(), DecimalDigit) - text.begin());
    text.remove_prefix(length);
    return length > 0;
}

// Removes the text up to and including `end`.
bool TakeUntil(std::string_view& text, std::string_view end, std::string_view& found) {
    const size_t at = text.find(end);
    if (at == std::string_view::npos) {
        return false;
    }
    found = text.substr(0, at);
    text.remove_prefix(at + end.size());
    return true;
}

// The system gives the reason why a process could not be opened; the model does not know it.
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

std::string Narrow(std::basic_string_view<WideChar> text) {
    std::string bytes(text.size(), '\0');
    uint32_t all = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        all |= static_cast<uint32_t>(text[i]);
        bytes[i] = static_cast<char>(static_cast<unsigned char>(text[i]));
    }
    if (all < 0x100) {
        return bytes;
    }
    bytes.clear();
    for (const WideChar unit : text) {
        if (unit < 0x100) {
            bytes += static_cast<char>(static_cast<unsigned char>(unit));
        } else {
            bytes += "\\w" + std::to_string(static_cast<uint32_t>(unit));
        }
    }
    return bytes;
}

void AddRecord(int32_t level, std::basic_string_view<WideChar> record, Trace& trace) {
    const std::string bytes = Narrow(record);
    std::string_view rest = bytes;
    std::string_view file;
    std::string_view function;
    const bool complete = (level == 30 || level == 35) && TakeForm(rest, "9999-99-99 99:99:99 [") &&
                          TakeForm(rest, level == 30 ? "TRACE][" : "ERROR][") && TakeUntil(rest, " ", file) &&
                          TakeNumber(rest) && TakeForm(rest, "][") && TakeUntil(rest, "] [", function) &&
                          TakeNumber(rest) && TakeForm(rest, "] ") && rest.ends_with("\r\n") && !file.empty() &&
                          file.find_first_of("/\\") == std::string_view::npos;
    if (!complete) {
        trace.Add({"not a record, level ", Decimal(level), ": ", bytes});
        return;
    }
    rest.remove_suffix(2);
    if (function == "CMordRecv::GetProcPathByPid") {
        trace.AddLog(level, "", function, {WithoutReason(rest)});
    } else {
        trace.AddLog(level, "", function, {rest});
    }
}

} // namespace model
