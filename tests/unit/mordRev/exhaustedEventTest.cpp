// Memory that runs out while an event is handled, in all its ways out, with records and without them.
#include "unit/mordRev/exhaustedReceiver.h"

namespace {

using namespace exhausted;

// One way out of HandleEvent, as the receiver and its host make it.
struct WayOut {
    const char* name;
    bool result;
    uint32_t reply;
    uint32_t mode = MODE_ACTION_TABLE;
    uint32_t exceptionMode = EXCEPTION_BLOCK;
    int32_t flags = 0;
    int32_t queryCode = DOT_QUERY_ANSWERED;
    const char* answer = nullptr; // null: the one that allows the second rule
    bool hasAnswer = true;
    bool starts = true;
    bool reports = true;
    bool matches = true; // whether the allow list has the answer's machine ids
    bool acts = false;   // whether the action table has the rules' type
    bool hasEvent = true;
    uint32_t ruleCount = 2;
};

const WayOut waysOut[] = {
    {.name = "Match", .result = true, .reply = REPLY_ALLOW},
    {.name = "MatchFlagged", .result = true, .reply = REPLY_ALLOW_FLAGGED, .flags = EVENT_FLAG_REPLY_TWO},
    {.name = "NoMatch", .result = false, .reply = REPLY_BLOCK, .matches = false},
    {.name = "NoMatchButAction", .result = false, .reply = REPLY_ALLOW, .matches = false, .acts = true},
    {.name = "NoMatchButMode",
     .result = false,
     .reply = REPLY_ALLOW,
     .mode = MODE_ALLOW_AFTER_DECISION,
     .matches = false},
    {.name = "GuidWithoutMids",
     .result = false,
     .reply = REPLY_BLOCK,
     .answer = R"({"a text that is too long to be kept without an allocation: guid":{"value":1,"mid":{}}})"},
    {.name = "AnswerWithFaults",
     .result = false,
     .reply = REPLY_BLOCK,
     .answer = R"({"G":{"value":0},"H":{"value":1,"mid":{"1":1}},"I":{"value":1},"J":{"value":"x"}})"},
    {.name = "AnswerWithoutValue", .result = false, .reply = REPLY_BLOCK, .answer = R"({"G":{}})"},
    {.name = "AnswerIsNoJson", .result = false, .reply = REPLY_BLOCK, .answer = R"({"G":{"value":1,)"},
    {.name = "AnswerIsEmpty", .result = false, .reply = REPLY_BLOCK, .answer = ""},
    {.name = "NetworkErrorBlocked", .result = true, .reply = REPLY_BLOCK, .queryCode = DOT_QUERY_NETWORK_ERROR},
    {.name = "NetworkErrorAllowed",
     .result = true,
     .reply = REPLY_ALLOW,
     .exceptionMode = EXCEPTION_ALLOW,
     .queryCode = DOT_QUERY_NETWORK_ERROR,
     .hasAnswer = false},
    {.name = "QueryError", .result = false, .reply = REPLY_BLOCK, .queryCode = 1},
    {.name = "NullAnswer", .result = false, .reply = REPLY_BLOCK, .hasAnswer = false},
    {.name = "Emergency", .result = true, .reply = REPLY_ALLOW, .mode = MODE_EMERGENCY},
    {.name = "Disconnect", .result = true, .reply = REPLY_ALLOW, .flags = EVENT_FLAG_DISCONNECT},
    {.name = "NotStarted", .result = false, .reply = REPLY_BLOCK, .starts = false},
    {.name = "WithoutSink", .result = true, .reply = REPLY_ALLOW, .reports = false},
};

std::ostream& operator<<(std::ostream& out, const WayOut& way) {
    return out << way.name;
}

class ExhaustedEvent : public ExhaustedMemory, public testing::WithParamInterface<WayOut> {
protected:
    bool Decide(uint32_t* reply) {
        const WayOut& way = GetParam();
        return receiver->HandleEvent(way.hasEvent ? &event : nullptr, rules, way.ruleCount, reply);
    }

    void GoTheWay(const WayOut& way) {
        const bool logs = std::exchange(LogFileEnabled, false);
        SetMode(way.mode);
        SetExceptionMode(way.exceptionMode);
        event.Int32("flags", way.flags);
        countingHost.queryCode = way.queryCode;
        countingHost.hasAnswer = way.hasAnswer;
        countingHost.answer =
            way.answer != nullptr ? way.answer : kit::AnswerText(longText + "guid", {longText + "1", longText + "2"});
        way.starts ? receiver->Start() : receiver->Stop();
        receiver->SetReportSink(way.reports ? &countingSink : nullptr);
        receiver->SetAllowList(ListOf(longText + (way.matches ? "2" : "other")).c_str());
        receiver->ParseActionJson(way.acts ? actions.c_str() : "{}");
        LogFileEnabled = logs;
    }

    // Whatever happens, the answer goes back, nothing of the object changes, and this event and the known one are
    // decided as they should be right afterwards.
    void SweepTheWay(std::initializer_list<bool> ways) {
        const WayOut& way = GetParam();
        uint32_t written = 0;
        int deletions = 0;
        AllowTable list;
        ActionTable table;
        Sweep([&] { Decide(&written); },
              [&] {
                  GoTheWay(way);
                  written = 77;
                  deletions = countingHost.deletions;
                  list = Fields().AllowedMids();
                  table = Fields().Actions();
              },
              [&](const Failure& failure) {
                  if (!LogFileEnabled) {
                      ExpectThrown(failure);
                  }
                  EXPECT_EQ(countingHost.answersOut, 0);
                  EXPECT_LE(countingHost.deletions, deletions + 1);
                  EXPECT_TRUE(written == 77 || written <= REPLY_ALLOW_FLAGGED) << written;
                  EXPECT_EQ(Fields().AllowedMids(), list);
                  EXPECT_EQ(Fields().Actions(), table);
                  EXPECT_EQ(Fields().Mid(), longText + "mid");
                  EXPECT_EQ(Fields().Mode(), way.mode);
                  EXPECT_EQ(Fields().ExceptionMode(), way.exceptionMode);
                  EXPECT_EQ(Fields().Started(), way.starts);
                  uint32_t next = 77;
                  EXPECT_EQ(Decide(&next), way.result);
                  EXPECT_EQ(next, way.reply);
                  GoTheWay(waysOut[0]);
                  ExpectTheKnownEventDecided();
              },
              ways);
        EXPECT_EQ(siblings.ConverterReferences(), 0);
    }

    kit::FakeRecord event = kit::MakeFullRecord("", "");
    IEventRecord* rules[2] = {&first, &second};
    const std::string actions = R"({")" + longText + R"(type":1})";
};

TEST_P(ExhaustedEvent, LeavesNothingBehind) {
    SweepTheWay({false, true});
}

// Records take most of the time, and a failure that lasts meets the same ones on every way.
TEST_P(ExhaustedEvent, LeavesNothingBehindWithRecordsOnTheWay) {
    LogFileEnabled = true;
    if (std::string(GetParam().name) == waysOut[0].name) {
        SweepTheWay({false, true});
    } else {
        SweepTheWay({false});
    }
}

INSTANTIATE_TEST_SUITE_P(WayOut, ExhaustedEvent, testing::ValuesIn(waysOut),
                         [](const testing::TestParamInfo<WayOut>& way) { return std::string(way.param.name); });

// The ways on which nothing but records is made.
class ExhaustedRefusal : public ExhaustedEvent {};

TEST_P(ExhaustedRefusal, LeavesNothingBehindWithRecordsOnTheWay) {
    LogFileEnabled = true;
    SweepTheWay({false, true});
}

INSTANTIATE_TEST_SUITE_P(
    WayOut, ExhaustedRefusal,
    testing::Values(WayOut{.name = "NullEvent", .result = false, .reply = REPLY_BLOCK, .hasEvent = false},
                    WayOut{.name = "NoRules", .result = false, .reply = REPLY_BLOCK, .ruleCount = 0}),
    [](const testing::TestParamInfo<WayOut>& way) { return std::string(way.param.name); });

class ExhaustedMemoryOfEvents : public ExhaustedMemory {
protected:
    bool Decide(uint32_t* reply) { return receiver->HandleEvent(&event, rules, 2, reply); }

    kit::FakeRecord event = kit::MakeFullRecord("", "");
    IEventRecord* rules[2] = {&first, &second};
};

// The log's second record, of the answer, is the last thing before the branch.
TEST_F(ExhaustedMemoryOfEvents, AllForbidNeverGivesTheAnswerBackOnceItsRecordIsBegun) {
    LogFileEnabled = true;
    Fields().Mode() = MODE_ALL_FORBID;
    int before = 0;
    int within = 0;
    uint32_t reply = 77;
    Sweep([&] { Decide(&reply); }, [&] { countingHost.answersOut = 0; },
          [&](const Failure&) {
              const bool reached = siblings.Records().size() >= 2;
              ++(reached ? within : before);
              EXPECT_EQ(countingHost.answersOut, reached ? 1 : 0);
          });
    EXPECT_GT(before, 10);
    EXPECT_GT(within, 10);
    EXPECT_EQ(countingHost.answersOut, 1);
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

// The buffer of a record's text is the one allocation whose failure is no exhausted memory but an absent value.
TEST_F(ExhaustedMemoryOfEvents, ATextWhoseBufferCannotBeHadIsEmptyAndTheEventIsDecided) {
    receiver->SetAllowList(ListOf(longText + "2").c_str());
    int absent = 0;
    uint32_t reply = 77;
    Sweep([&] { Decide(&reply); }, [&] { reply = 77; },
          [&](const Failure& failure) {
              if (failure.kind == kit::AllocationKind::Calloc && !failure.lasting) {
                  ++absent;
                  EXPECT_FALSE(failure.thrown);
                  EXPECT_LE(reply, REPLY_ALLOW);
              }
          });
    // The type of the first rule; both guids for the request; guid and type of each rule for the decision; guid, type
    // and two addresses for the report.
    EXPECT_EQ(absent, 11);
}

} // namespace
