#include "model/libraryRecords.h"

#include <algorithm>

namespace model {
namespace {

// One byte for each unit, as the siblings' converter widened them.
void Narrow(std::basic_string_view<WideChar> record, std::string& bytes) {
    bytes.resize(record.size());
    uint32_t all = 0;
    for (size_t i = 0; i < record.size(); ++i) {
        all |= static_cast<uint32_t>(record[i]);
        bytes[i] = static_cast<char>(static_cast<unsigned char>(record[i]));
    }
    if (all < 0x100) {
        return;
    }
    bytes.clear();
    for (const WideChar unit : record) {
        if (unit < 0x100) {
            bytes += static_cast<char>(static_cast<unsigned char>(unit));
        } else {
            bytes += "\\w" + std::to_string(static_cast<uint32_t>(unit));
        }
    }
}

bool DecimalDigit(char c) {
    return c >= '0' && c <= '9';
}

// Takes `form` from the beginning of `text`; 9 stands for any digit.
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

// What stands before `end`, which is taken too.
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
    Narrow(record, m_bytes);
    std::string_view rest = m_bytes;
    std::string_view file;
    std::string_view function;
    const bool whole = (level == 30 || level == 35) && TakeForm(rest, "9999-99-99 99:99:99 [") &&
                       TakeForm(rest, level == 30 ? "TRACE][" : "ERROR][") && TakeUntil(rest, " ", file) &&
                       TakeNumber(rest) && TakeForm(rest, "][") && TakeUntil(rest, "] [", function) &&
                       TakeNumber(rest) && TakeForm(rest, "] ") && rest.ends_with("\r\n") && !file.empty() &&
                       file.find_first_of("/\\") == std::string_view::npos;
    if (!whole) {
        m_trace.Add({"not a record, level ", Decimal(level), ": ", m_bytes});
        return;
    }
    rest.remove_suffix(2);
    if (function == "CMordRecv::GetProcPathByPid") {
        m_trace.AddLog(level, "", function, {WithoutReason(rest)});
    } else {
        m_trace.AddLog(level, "", function, {rest});
    }
}

} // namespace model
