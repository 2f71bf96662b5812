#include "fuzz/receiver/records.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/require.h"

namespace {

struct Record {
    std::string text; // a byte for each unit, as the converter widened it
    int32_t level;
};

std::vector<Record> records;

// Whether a record begins like "2026-11-16 14:03:07 [TRACE][".
bool BeginsWell(std::string_view text, int32_t level) {
    constexpr std::string_view form = "0000-00-00 00:00:00 ";
    const auto fits = [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; };
    return text.size() > form.size() &&
           std::equal(form.begin(), form.end(), text.begin(), [&](char wanted, char c) { return fits(c, wanted); }) &&
           text.substr(form.size()).starts_with(level == 30 ? "[TRACE][" : "[ERROR][");
}

// The end of a record for the model's line "log LEVEL FUNCTION: MESSAGE".
std::string Ending(const std::string& line, int32_t level) {
    const std::string beginning = "log " + std::to_string(level) + " ";
    const size_t colon = line.find(": ", line.find("CMordRecv::") + 11);
    Require(line.starts_with(beginning) && colon != std::string::npos, "a record has the level of the model");
    return "][" + line.substr(beginning.size(), colon - beginning.size()) + "] [1] " + line.substr(colon + 2) + "\r\n";
}

} // namespace

void TakeRecord(const WideChar* text, int32_t level) {
    std::string bytes;
    for (; *text != WideChar{}; ++text) {
        bytes += static_cast<char>(static_cast<unsigned char>(*text));
    }
    records.push_back({std::move(bytes), level});
}

void ForgetRecords() {
    records.clear();
}

void RequireRecords(const model::Trace& expected) {
    const auto& lines = expected.Lines();
    Require(records.size() == lines.size(), "there are as many records as in the model");
    for (size_t i = 0; i < lines.size(); ++i) {
        Require(BeginsWell(records[i].text, records[i].level), "a record begins with time and level");
        Require(records[i].text.ends_with(Ending(lines[i], records[i].level)), "a record has the text of the model");
    }
}
