#include "unit/siblings/logRecords.h"

#include <map>

namespace siblingTest {

WideString NumberedRecord(const std::string& tag, int number) {
    // Different lengths reveal records that overwrite each other.
    const std::string words =
        tag + ' ' + std::to_string(number) + ' ' + std::string(static_cast<size_t>(number % 90), '.');
    return WideString(words.begin(), words.end()) + WIDE("\r\n");
}

bool WriteNumbered(ILogWriter& writer, const std::string& tag, int count) {
    bool all = true;
    for (int number = 0; number < count; ++number) {
        all = writer.WriteRecord(NumberedRecord(tag, number).c_str(), levelTrace) == 0 && all;
    }
    return all;
}

bool HoldsNumbered(const std::string& log, const std::vector<std::string>& tags, int count) {
    std::map<std::string, int> next;
    for (const std::string& tag : tags) {
        next[tag] = 0;
    }
    for (size_t position = 0; position < log.size();) {
        const std::string tag = log.substr(position, log.find(' ', position) - position);
        const auto known = next.find(tag);
        if (known == next.end()) {
            return false;
        }
        const WideString record = NumberedRecord(tag, known->second++);
        if (log.compare(position, record.size(), std::string(record.begin(), record.end())) != 0) {
            return false;
        }
        position += record.size();
    }
    for (const auto& [tag, number] : next) {
        if (number != count) {
            return false;
        }
    }
    return true;
}

} // namespace siblingTest
