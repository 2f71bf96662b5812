// Insertions into a record, and the sinks of an ended record.
#include "logging/logStream.h"

#include <limits>
#include <locale>
#include <type_traits>

#include "kit/text/utf.h"
#include "unit/logging/logFixture.h"

namespace {

using Texts = std::vector<std::string>;

static_assert(std::is_base_of_v<std::basic_ostream<WideChar>, Base::CSmartStream>);
static_assert(LOG_LEVEL_TRACE == 30 && LOG_LEVEL_ERROR == 35);

class LogStreamInsertion : public LogFixture {
protected:
    void SetUp() override {
        LogFixture::SetUp();
        SetLogState(false, true, false);
    }

    // The text of a record of these values, without its line end.
    template <typename... Values>
    std::string Inserted(const Values&... values) {
        LogStream stream(LOG_LEVEL_TRACE);
        (stream << ... << values);
        stream.EndRecord();
        const Texts texts = TakeDebugOutput();
        if (texts.size() != 1 || !texts[0].ends_with("\r\n")) {
            return "no record, or no line end";
        }
        return texts[0].substr(0, texts[0].size() - 2);
    }
};

TEST_F(LogStreamInsertion, WideTextIsUnchanged) {
    EXPECT_EQ(Inserted(WIDE("plain")), "plain");
    EXPECT_EQ(Inserted(WIDE("\u4E2D\u6587 \U0001F600")), "\xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80");
    EXPECT_EQ(Inserted(WIDE("")), "");
    EXPECT_EQ(TakeCalls(),
              (Texts{"OutputDebugStringW(plain\r\n)",
                     "OutputDebugStringW(\xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80\r\n)", "OutputDebugStringW(\r\n)"}))
        << "no converter is needed";
}

TEST_F(LogStreamInsertion, NarrowTextIsConverted) {
    EXPECT_EQ(Inserted("plain"), "plain");
    EXPECT_EQ(Inserted("\xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80"), "\xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80");
    EXPECT_EQ(Inserted(std::string("gr\xC3\xBC\xC3\x9F")), "gr\xC3\xBC\xC3\x9F");
}

TEST_F(LogStreamInsertion, NullPointerAndEmptyNarrowTextAddNothing) {
    EXPECT_EQ(Inserted(static_cast<const char*>(nullptr)), "");
    EXPECT_EQ(Inserted(""), "");
    EXPECT_EQ(Inserted(std::string()), "");
    EXPECT_EQ(Inserted(WIDE("a"), static_cast<const char*>(nullptr), WIDE("b"), std::string(), WIDE("c")), "abc");
}

TEST_F(LogStreamInsertion, NarrowTextEndsAtItsFirstNul) {
    EXPECT_EQ(Inserted(std::string("ab\0cd", 5), WIDE("|")), "ab|");
}

TEST_F(LogStreamInsertion, LongTextIsComplete) {
    const std::string text(100'000, 'x');
    EXPECT_EQ(Inserted(text), text);
    EXPECT_EQ(Inserted(kit::ToWide(text).c_str()), text);
}

TEST_F(LogStreamInsertion, NumbersAreDecimalOver32Bits) {
    EXPECT_EQ(Inserted(int32_t{0}), "0");
    EXPECT_EQ(Inserted(int32_t{-1}), "-1");
    EXPECT_EQ(Inserted(int32_t{7}), "7");
    EXPECT_EQ(Inserted(std::numeric_limits<int32_t>::max()), "2147483647");
    EXPECT_EQ(Inserted(std::numeric_limits<int32_t>::min()), "-2147483648");
    EXPECT_EQ(Inserted(uint32_t{0}), "0");
    EXPECT_EQ(Inserted(uint32_t{2147483648U}), "2147483648");
    EXPECT_EQ(Inserted(std::numeric_limits<uint32_t>::max()), "4294967295");
}

TEST_F(LogStreamInsertion, BoolIsOneOrZero) {
    EXPECT_EQ(Inserted(true), "1");
    EXPECT_EQ(Inserted(false), "0");
}

TEST_F(LogStreamInsertion, ValuesHaveNoSeparator) {
    EXPECT_EQ(Inserted(WIDE("reply="), uint32_t{1}, WIDE(",rule guid"), std::string("G"), true, int32_t{-5}, "n"),
              "reply=1,rule guidG1-5n");
}

// A locale that groups digits and names its booleans.
template <typename Char>
struct HostNumbers : std::numpunct<Char> {
    std::string do_grouping() const override { return "\3"; }
    Char do_thousands_sep() const override { return '.'; }
    std::basic_string<Char> do_truename() const override { return {'j', 'a'}; }
};

TEST_F(LogStreamInsertion, NumbersIgnoreTheGlobalLocale) {
    const std::locale before = std::locale::global(
        std::locale(std::locale(std::locale::classic(), new HostNumbers<char>), new HostNumbers<wchar_t>));
    EXPECT_EQ(Inserted(int32_t{-1234567}, WIDE(" "), uint32_t{4294967295U}, WIDE(" "), true), "-1234567 4294967295 1");
    std::locale::global(before);
}

class LogStreamRecords : public LogFixture {};

TEST_F(LogStreamRecords, DebugOutputComesBeforeTheLogger) {
    SetLogState(true, true, true);
    siblings.logsRecords = true;
    LogStream stream(LOG_LEVEL_ERROR);
    stream << WIDE("text");
    stream.EndRecord();
    EXPECT_EQ(TakeCalls(), (Texts{"OutputDebugStringW(text\r\n)", "ILogWriter.WriteRecord(text\r\n,35)"}));
}

TEST_F(LogStreamRecords, LoggerGetsTheLevelOfTheStream) {
    SetLogState(true, false, true);
    for (const int32_t level : {30, 35}) {
        LogStream(level).EndRecord();
    }
    const auto records = siblings.Records();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].level, 30);
    EXPECT_EQ(records[1].level, 35);
}

TEST_F(LogStreamRecords, SecondRecordExcludesTheFirst) {
    SetLogState(true, true, true);
    LogStream stream(LOG_LEVEL_TRACE);
    stream << WIDE("the first, longer one ") << int32_t{1};
    stream.EndRecord();
    stream << WIDE("second ") << int32_t{2};
    stream.EndRecord();
    const Texts two{"the first, longer one 1\r\n", "second 2\r\n"};
    EXPECT_EQ(TakeDebugOutput(), two);
    EXPECT_EQ(TakeRawRecords(), two);
}

TEST_F(LogStreamRecords, EmptyRecordIsItsLineEnd) {
    SetLogState(true, false, true);
    LogStream stream(LOG_LEVEL_TRACE);
    stream.EndRecord();
    EXPECT_EQ(TakeRawRecords(), Texts{"\r\n"});
}

// A null wide pointer fails the stream, as in any standard stream. The rest of the record is lost.
TEST_F(LogStreamRecords, FailedInsertionLosesTheRestOfItsRecordOnly) {
    SetLogState(true, true, true);
    LogStream stream(LOG_LEVEL_TRACE);
    stream << WIDE("before ") << static_cast<const WideChar*>(nullptr) << WIDE("after ") << int32_t{3} << "narrow";
    stream.EndRecord();
    EXPECT_EQ(TakeRawRecords(), Texts{"before "});
    EXPECT_EQ(TakeDebugOutput(), Texts{"before "});
    stream << WIDE("next ") << int32_t{4} << "narrow";
    stream.EndRecord();
    EXPECT_EQ(TakeRawRecords(), Texts{"next 4narrow\r\n"});
    EXPECT_EQ(TakeDebugOutput(), Texts{"next 4narrow\r\n"});
}

TEST_F(LogStreamRecords, EachOfManyRecordsThroughOneStreamHoldsItsOwnTextOnly) {
    SetLogState(true, false, true);
    LogStream stream(LOG_LEVEL_TRACE);
    Texts expected;
    for (int32_t i = 0; i < 1000; ++i) {
        stream << i;
        stream.EndRecord();
        expected.push_back(std::to_string(i) + "\r\n");
    }
    EXPECT_EQ(TakeRawRecords(), expected);
}

TEST_F(LogStreamRecords, FlagsAndLoggerSelectTheSinks) {
    for (const bool file : {false, true}) {
        for (const bool debugView : {false, true}) {
            for (const bool logger : {false, true}) {
                SetLogState(file, debugView, logger);
                {
                    LogStream stream(LOG_LEVEL_TRACE);
                    stream << WIDE("text");
                    stream.EndRecord();
                }
                const auto state = testing::Message()
                                   << "file " << file << " debug " << debugView << " logger " << logger;
                EXPECT_EQ(TakeDebugOutput(), debugView ? Texts{"text\r\n"} : Texts()) << state;
                EXPECT_EQ(TakeRawRecords(), file && logger ? Texts{"text\r\n"} : Texts()) << state;
                EXPECT_EQ(system.standardOutput.Take(), Texts()) << state;
            }
        }
    }
}

} // namespace
