// A record that answers wrongly, seen from the event: for each value of event and rule each lie that can be told apart,
// with what the host is asked and told then.
#include <cstdint>

#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

const std::string held = "0123456789"; // what a lying record holds under the key

struct TextLie {
    const char* name;
    StringBehaviour behaviour;
    std::string reading;
};

const TextLie textLies[] = {
    {"first result 0", {.firstResult = 0}, ""},
    {"first result 200", {.firstResult = 200}, ""},
    {"first result 202", {.firstResult = 202}, ""},
    {"first result -1", {.firstResult = -1}, ""},
    {"first result least", {.firstResult = INT32_MIN}, ""},
    {"size 0", {.firstSize = 0}, ""},
    {"size -1", {.firstSize = -1}, ""},
    {"size least", {.firstSize = INT32_MIN}, ""},
    {"size 1", {.firstSize = 1}, "0"},
    {"size without the NUL", {.firstSize = 10}, held},
    {"size far too large", {.firstSize = 10000000}, held},
    {"no NUL and no room for it", {.firstSize = 4, .writesNul = false}, "0123"},
    {"no NUL in a large buffer", {.firstSize = 5000, .writesNul = false}, held},
    {"second result 1", {.secondResult = 1}, ""},
    {"second result -1", {.secondResult = -1}, ""},
    {"second result 201", {.secondResult = 201}, ""},
    {"nothing written", {.writes = false}, ""},
    {"nothing written into a large buffer", {.firstSize = 5000, .writes = false}, ""},
    {"size grows to the largest", {.secondSize = INT32_MAX}, held},
    {"size grows by one, and no NUL", {.firstSize = 10, .writesNul = false, .secondSize = 11}, held},
    {"size shrinks to 1", {.secondSize = 1}, held},
    {"size shrinks to 0", {.secondSize = 0}, held},
    {"size turns negative", {.secondSize = INT32_MIN}, held},
};

class LyingRecord : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
        host.queryCode = 1; // the records are what counts here
    }

    // What the event leads to: a request for `guid`, and the report.
    void ExpectToldAs(const std::string& guid, const ExpectedReport& expected) {
        EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
        EXPECT_EQ(TakeCalls(), (Lines{QueryCall({guid}, "LOCAL-MID"), "FreeResult(null)", ReportCall(expected)}));
    }

    const ExpectedReport honest{.guids = {"GUID-1"}, .type = "TYPE-1"};
};

TEST_F(LyingRecord, AboutATextOfTheRule) {
    for (const TextLie& lie : textLies) {
        SCOPED_TRACE(lie.name);
        ExpectedReport expected = honest;
        rules.front() = MakeRule(held, "TYPE-1");
        rules.front().Behave("guid", lie.behaviour);
        expected.guids = {lie.reading};
        ExpectToldAs(lie.reading, expected);

        expected = honest;
        rules.front() = MakeRule("GUID-1", held);
        rules.front().Behave("type", lie.behaviour);
        expected.type = lie.reading;
        ExpectToldAs("GUID-1", expected);
    }
}

TEST_F(LyingRecord, AboutATextOfTheEvent) {
    for (const TextLie& lie : textLies) {
        SCOPED_TRACE(lie.name);
        ExpectedReport expected = honest;
        event = SampleEvent();
        event.String("remote_addr_ip", held).Behave("remote_addr_ip", lie.behaviour);
        expected.sendIp = lie.reading;
        ExpectToldAs("GUID-1", expected);

        expected = honest;
        event = SampleEvent();
        event.String("local_addr_ip", held).Behave("local_addr_ip", lie.behaviour);
        expected.recvIp = lie.reading;
        ExpectToldAs("GUID-1", expected);
    }
}

TEST_F(LyingRecord, AboutATextOfTheRuleDecidesByWhatWasRead) {
    host.queryCode = 0;
    for (const TextLie& lie : textLies) {
        SCOPED_TRACE(lie.name);
        rules.front() = MakeRule(held, "web"); // whose key in the list is the guid
        rules.front().Behave("guid", lie.behaviour);
        host.answer = AnswerText(lie.reading, {"MID-1"});
        Allow("MID-1", {lie.reading});
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        Lines made = TakeCalls();
        ASSERT_EQ(made.size(), 4U);
        EXPECT_EQ(made[2], DeleteCall(lie.reading, "LOCAL-MID", "web"));
    }
}

TEST_F(LyingRecord, AboutANumberThatFailsThoughItIsWritten) {
    for (const int32_t result : {1, -1, 201, INT32_MIN, INT32_MAX}) {
        SCOPED_TRACE(result);
        ExpectedReport expected = honest;
        event = SampleEvent();
        event.FailingInt32("remote_addr_port", 77, result);
        expected.sendPort = "0";
        ExpectToldAs("GUID-1", expected);

        expected = honest;
        event = SampleEvent();
        event.FailingInt32("local_addr_port", INT32_MIN, result);
        expected.recvPort = "0";
        ExpectToldAs("GUID-1", expected);

        // Neither a disconnect event nor one for reply 2.
        event = SampleEvent();
        event.FailingInt32("flags", EVENT_FLAG_DISCONNECT | EVENT_FLAG_REPLY_TWO, result);
        ExpectToldAs("GUID-1", honest);

        // No such process as 0 can be opened.
        expected = honest;
        event = SampleEvent();
        event.FailingInt32("pid", 4, result);
        expected.procName = expected.procPath = "";
        ExpectToldAs("GUID-1", expected);

        // The result of a long number is not looked at.
        expected = honest;
        event = SampleEvent();
        event.Int64WithResult("net_drv", INT64_MIN, result);
        expected.netDrvVersion = "-9223372036854775808";
        ExpectToldAs("GUID-1", expected);
    }
}

TEST_F(LyingRecord, AboutANumberThatIsDeliveredButNotWritten) {
    ExpectedReport expected = honest;
    event.Unwritten("remote_addr_port").Unwritten("local_addr_port").Unwritten("net_drv").Unwritten("flags");
    expected.sendPort = expected.recvPort = expected.netDrvVersion = "0";
    ExpectToldAs("GUID-1", expected);
    event.Unwritten("pid");
    expected.procName = expected.procPath = "";
    ExpectToldAs("GUID-1", expected);
}

// Gives another text, and another number, at each read: those that it is given, the last one again and again.
class FickleRecord final : public FakeRecord {
public:
    std::map<std::string, Lines> texts;
    std::vector<int32_t> flags;

    int32_t GetInt32(const char* name, int32_t* value) override {
        if (std::string(name) != "flags") {
            return FakeRecord::GetInt32(name, value);
        }
        *value = flags.front();
        if (flags.size() > 1) {
            flags.erase(flags.begin());
        }
        return RECORD_DELIVERED;
    }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        Lines& all = texts[name];
        if (all.empty()) {
            return FakeRecord::GetString(name, buffer, size);
        }
        String(name, all.front());
        if (buffer != nullptr && all.size() > 1) {
            all.erase(all.begin());
        }
        return FakeRecord::GetString(name, buffer, size);
    }
};

TEST_F(LyingRecord, ThatGivesAnotherTextAtEachReadIsTakenAtItsWordEachTime) {
    FickleRecord rule;
    // A guid is read for the request, the verdict and the report; a type for the last word, the verdict and the report.
    rule.texts = {{"guid", {"GUID-1", "GUID-2", "GUID-3"}}, {"type", {"TYPE-1", "TYPE-2", "TYPE-3"}}};
    rulePointers = {&rule};
    host.queryCode = 0;
    host.answer = AnswerText("GUID-2", {"MID-1"});
    Allow("MID-1", {"TYPE-2"});
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall({"GUID-1"}, "LOCAL-MID"), "FreeResult(answer 1)",
                                  DeleteCall("GUID-2", "LOCAL-MID", "TYPE-2"),
                                  ReportCall({.guids = {"GUID-3"}, .type = "TYPE-3", .block = false})}));

    rule.texts = {{"guid", {"GUID-1"}}, {"type", {"TYPE-1", "TYPE-2", "TYPE-3"}}};
    SetActions(R"({"TYPE-1":1})");
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls().back(),
              ReportCall({.guids = {"GUID-1"}, .type = "TYPE-3", .block = false, .blockModified = true}));
}

TEST_F(LyingRecord, ThatGivesOtherFlagsForTheReportIsDecidedByTheFirstAndReportedByTheSecond) {
    FickleRecord fickle;
    static_cast<FakeRecord&>(fickle) = SampleEvent();
    const auto handle = [&](std::vector<int32_t> flags) {
        fickle.flags = std::move(flags);
        Verdict verdict{false, unwritten};
        verdict.result = receiver->HandleEvent(&fickle, rulePointers.data(), 1, &verdict.reply);
        return verdict;
    };
    EXPECT_EQ(handle({0, EVENT_FLAG_DISCONNECT}), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeCalls(), (Lines{QueryCall({"GUID-1"}, "LOCAL-MID"), "FreeResult(null)"}));
    EXPECT_EQ(handle({EVENT_FLAG_DISCONNECT, 0}), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{ReportCall({.guids = {"GUID-1"}, .type = "TYPE-1", .block = false})}));
    EXPECT_EQ(handle({EVENT_FLAG_DISCONNECT, EVENT_FLAG_REPLY_TWO}), (Verdict{true, REPLY_ALLOW}));
}

} // namespace
