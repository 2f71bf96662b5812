// Temporary directories for logs.
#pragma once

#include "kit/system/temporaryDirectory.h"
#include "unit/siblings/systemKit.h"

namespace siblingTest {

// A temporary directory whose path has characters beyond ASCII.
class TestFolder : public kit::TemporaryDirectory {
public:
    TestFolder() : TemporaryDirectory("siblings-\xC3\xA4\xE4\xB8\x96-") {}

    // As wide text, without and with a separator at the end.
    WideString Text() const { return Path().string<WideChar>(); }
    WideString TextWithSeparator() const { return (Path() / "").string<WideChar>(); }
};

// Sets the log directory to a new directory. Create writers during the lifetime of the object.
class LogFolder : public TestFolder {
public:
    LogFolder() { SetVariable("ZELK_LOG_DIR", Text()); }
    ~LogFolder() { SetVariable("ZELK_LOG_DIR", {}); }

    // The bytes of the log of `module`, a name in UTF-8.
    std::string Log(const std::string& module) const { return Read(module + ".log"); }
};

} // namespace siblingTest
