// Records that tests write and find again.
#pragma once

#include <string>
#include <vector>

#include "unit/siblings/serviceHolder.h"
#include "unit/siblings/siblingLibrary.h"
#include "unit/siblings/temporaryFolder.h"

namespace siblingTest {

constexpr int32_t levelTrace = 30;
constexpr int32_t levelError = 35;

// Chooses a fresh folder as the log directory for as long as it lives. Writers are to be made meanwhile.
class LogFolder : public TemporaryFolder {
public:
    LogFolder() { SetVariable("ZELK_LOG_DIR", Text()); }
    ~LogFolder() { SetVariable("ZELK_LOG_DIR", {}); }

    // The bytes of the log of `module`.
    std::string Log(const std::string& module) const { return ReadFile(Path() / (module + ".log")); }
};

// "TAG NUMBER" and some more words, ended as records are.
WideString NumberedRecord(const std::string& tag, int number);

// Writes the records 0 to `count` - 1 of `tag`; returns whether all were taken.
bool WriteNumbered(ILogWriter& writer, const std::string& tag, int count);

// Whether `log` consists of the records 0 to `count` - 1 of each tag, each whole and once, those of a tag in their
// order.
bool HoldsNumbered(const std::string& log, const std::vector<std::string>& tags, int count);

} // namespace siblingTest
