// Numbered log records.
#pragma once

#include <string>
#include <vector>

#include "unit/siblings/logFolder.h"
#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

constexpr int32_t levelTrace = 30;
constexpr int32_t levelError = 35;

// "TAG NUMBER" and padding of a length that depends on the number, with the line end of a record.
WideString NumberedRecord(const std::string& tag, int number);

// Writes the records 0 to `count` - 1 of `tag`; returns whether all calls succeeded.
bool WriteNumbered(ILogWriter& writer, const std::string& tag, int count);

// Whether `log` consists of the records 0 to `count` - 1 of each tag, each complete and once. The records of a tag must
// be in order; those of different tags may alternate.
bool HoldsNumbered(const std::string& log, const std::vector<std::string>& tags, int count);

} // namespace siblingTest
