// An abandoned record on the real system: the standard wide output stream, and the debug output.
#include <iostream>
#include <sstream>

#include <gtest/gtest.h>

#include "kit/system/debugOutput.h"
#include "logging/logState.h"
#include "logging/logStream.h"

namespace {

// Captures std::wcout.
class StandardOutput {
public:
    StandardOutput() : m_former(std::wcout.rdbuf(&m_buffer)) {}
    ~StandardOutput() { std::wcout.rdbuf(m_former); }

    std::wstring Text() const { return m_buffer.str(); }

private:
    std::wstringbuf m_buffer;
    std::wstreambuf* m_former;
};

TEST(StandardOutput, GetsAnAbandonedRecord) {
    ASSERT_FALSE(LogFileEnabled || LogDebugViewEnabled);
    const StandardOutput standard;
    const kit::DebugOutput debug;
    { LogStream(LOG_LEVEL_TRACE) << WIDE("half ") << int32_t{-1}; }
    EXPECT_EQ(standard.Text(), L"half -1");
    EXPECT_EQ(debug.Text(), "half -1");
}

TEST(StandardOutput, GetsNonAsciiText) {
    const StandardOutput standard;
    const kit::DebugOutput debug;
    { LogStream(LOG_LEVEL_TRACE) << WIDE("gr\u00FC\u00DF"); }
    EXPECT_EQ(standard.Text(), L"gr\u00FC\u00DF");
    EXPECT_EQ(debug.Text(), "gr\xC3\xBC\xC3\x9F");
}

// The debug output is not compared: on Windows its code page may lack the character.
TEST(StandardOutput, GetsASupplementaryCharacter) {
    const StandardOutput standard;
    const kit::DebugOutput debug;
    { LogStream(LOG_LEVEL_TRACE) << WIDE("\U0001F600!"); }
    EXPECT_EQ(standard.Text(), L"\U0001F600!");
}

TEST(StandardOutput, GetsNoEndedRecord) {
    const StandardOutput standard;
    const kit::DebugOutput debug;
    {
        LogStream stream(LOG_LEVEL_TRACE);
        stream << WIDE("whole");
        stream.EndRecord();
    }
    EXPECT_EQ(standard.Text(), L"");
    EXPECT_EQ(debug.Text(), "");
}

// A buffer without room fails the stream.
class FullBuffer : public std::wstreambuf {};

TEST(StandardOutput, RecoversFromAFailedWrite) {
    FullBuffer full;
    std::wstreambuf* const former = std::wcout.rdbuf(&full);
    const kit::DebugOutput debug;
    { LogStream(LOG_LEVEL_TRACE) << WIDE("lost"); }
    EXPECT_TRUE(std::wcout.good());
    std::wcout.rdbuf(former);
    EXPECT_EQ(debug.Text(), "lost");
    const StandardOutput standard;
    { LogStream(LOG_LEVEL_TRACE) << WIDE("next"); }
    EXPECT_EQ(standard.Text(), L"next");
}

} // namespace
