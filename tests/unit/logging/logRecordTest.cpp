// The records of a log site.
#include "kit/text/utf.h"
#include "logging/logMacros.h"
#include "logging/logTimestamp.h"
#include "unit/logging/logFixture.h"

using Texts = std::vector<std::string>;

// Outside any namespace: that would be part of the names in the records.
struct LogSample {
    static void Ready() {
        line = __LINE__ + 1;
        LOG_TRACE(WIDE("logger is ready"));
    }
    static void Bad() {
        line = __LINE__ + 1;
        LOG_ERROR(WIDE("param error"));
    }
    void Values(const std::string& text, uint32_t number) const {
        LOG_TRACE(WIDE("mid=") << text << WIDE(" ,number=") << number);
    }
    static void Two() {
        LOG_TRACE(WIDE("first"));
        LOG_ERROR(WIDE("failed"));
        LOG_TRACE(WIDE("second"));
    }
    static void Long(const std::string& text) { LOG_TRACE(text); }

    static inline int line = 0;
};

void LogSampleFree();
void LogSampleFree() {
    LOG_TRACE(WIDE("free"));
}

namespace {

class LogRecord : public LogFixture {
protected:
    void SetUp() override {
        LogFixture::SetUp();
        SetLogState(true, true, true);
    }
};

TEST_F(LogRecord, HasTimeLevelSiteThreadAndMessage) {
    const std::string before = kit::ToNarrow(LogTimestamp().View());
    LogSample::Ready();
    const std::string after = kit::ToNarrow(LogTimestamp().View());
    const Texts texts = TakeDebugOutput();
    ASSERT_EQ(texts.size(), 1U);
    const std::string time = texts[0].substr(0, before.size());
    EXPECT_GE(time, before);
    EXPECT_LE(time, after);
    EXPECT_EQ(texts[0].substr(before.size()), " [TRACE][logRecordTest.cpp " + std::to_string(LogSample::line) +
                                                  "][LogSample::Ready] [4312] logger is ready\r\n");
    EXPECT_EQ(TakeRawRecords(), texts) << "both sinks receive the same text";
}

TEST_F(LogRecord, OfAnErrorHasItsLevel) {
    system.threadId = 4294967295U;
    LogSample::Bad();
    const Texts texts = TakeRawRecords();
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0].substr(kit::ToNarrow(LogTimestamp().View()).size()),
              " [ERROR][logRecordTest.cpp " + std::to_string(LogSample::line) +
                  "][LogSample::Bad] [4294967295] param error\r\n");
}

TEST_F(LogRecord, NamesTheThreadAtItsStart) {
    siblings.onConvert = [this](uint32_t, TextConversionRequest&) {
        system.threadId = 1;
        return std::nullopt;
    };
    LogSample::Bad();
    const Texts texts = TakeRawRecords();
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_TRUE(texts[0].ends_with("[LogSample::Bad] [4312] param error\r\n")) << texts[0];
}

TEST_F(LogRecord, PassesItsLevelToTheLogger) {
    LogSample::Ready();
    LogSample::Bad();
    const auto records = siblings.Records();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].level, 30);
    EXPECT_EQ(records[0].text, kit::Trace("logRecordTest.cpp LogSample::Ready", "logger is ready"));
    EXPECT_EQ(records[1].level, 35);
    EXPECT_EQ(records[1].text, kit::Error("logRecordTest.cpp LogSample::Bad", "param error"));
}

TEST_F(LogRecord, OfAFreeFunctionHasNoClass) {
    LogSampleFree();
    EXPECT_EQ(siblings.TakeRecordTexts(), Texts{kit::Trace("logRecordTest.cpp LogSampleFree", "free")});
}

TEST_F(LogRecord, JoinsLiteralsAndValuesWithoutSeparators) {
    LogSample().Values("A", 4294967295U);
    EXPECT_EQ(siblings.TakeRecordTexts(),
              Texts{kit::Trace("logRecordTest.cpp LogSample::Values", "mid=A ,number=4294967295")});
}

TEST_F(LogRecord, NonAsciiValueReachesBothSinks) {
    const std::string value = "gr\xC3\xBC\xC3\x9F \xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80";
    LogSample().Values(value, 1);
    const Texts records = TakeRawRecords();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_TRUE(records[0].ends_with("mid=" + value + " ,number=1\r\n")) << records[0];
    EXPECT_EQ(TakeDebugOutput(), records);
}

TEST_F(LogRecord, ExcludesEarlierRecordsOfItsFunction) {
    LogSample::Two();
    const Texts three{kit::Trace("logRecordTest.cpp LogSample::Two", "first"),
                      kit::Error("logRecordTest.cpp LogSample::Two", "failed"),
                      kit::Trace("logRecordTest.cpp LogSample::Two", "second")};
    EXPECT_EQ(siblings.TakeRecordTexts(), three);
    EXPECT_EQ(TakeDebugOutput().size(), 3U);
}

TEST_F(LogRecord, LongMessageIsComplete) {
    const std::string message(50'000, 'm');
    LogSample::Long(message);
    EXPECT_EQ(siblings.TakeRecordTexts(), Texts{kit::Trace("logRecordTest.cpp LogSample::Long", message)});
}

TEST_F(LogRecord, WritesNothingToTheStandardOutput) {
    LogSample::Two();
    EXPECT_EQ(system.standardOutput.Take(), Texts());
}

} // namespace
