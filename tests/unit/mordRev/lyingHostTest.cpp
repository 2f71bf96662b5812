// A host and a sink that answer wrongly: each result of each operation, with each kind of answer, and calls from within
// their calls.
#include <cstdint>

#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class LyingHost : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
        host.answer = AnswerText("GUID-1", {"MID-1"});
        Allow("MID-1", {"TYPE-1"});
    }

    std::string Reported(bool block, bool modified = false) const {
        return ReportCall({.guids = {"GUID-1"}, .type = "TYPE-1", .block = block, .blockModified = modified});
    }

    const std::string query = QueryCall({"GUID-1"}, "LOCAL-MID");
    const std::string deletion = DeleteCall("GUID-1", "LOCAL-MID", "TYPE-1");
};

TEST_F(LyingHost, AnswersThatContradictTheResultOfAQueryPlayNoPart) {
    const std::string good = *host.answer;
    const std::optional<std::string> answers[] = {std::nullopt, "", " ", "{", "{}", "null", good};
    for (const int32_t code : {1, -1, 2, 201, 1006, 1007, 1008, INT32_MIN, INT32_MAX}) {
        for (const uint32_t exception : {EXCEPTION_ALLOW, EXCEPTION_BLOCK}) {
            for (const auto& answer : answers) {
                SCOPED_TRACE(std::to_string(code) + " with " + answer.value_or("null"));
                SetExceptionMode(exception);
                host.queryCode = code;
                host.answer = answer;
                const bool network = code == DOT_QUERY_NETWORK_ERROR;
                const bool allow = network && exception == EXCEPTION_ALLOW;
                EXPECT_EQ(Decide(), (Verdict{network, allow ? REPLY_ALLOW : REPLY_BLOCK}));
                const Lines made = TakeCalls();
                ASSERT_EQ(made.size(), 3U);
                EXPECT_EQ(made[0], query);
                EXPECT_TRUE(made[1].starts_with(answer ? "FreeResult(answer" : "FreeResult(null)")) << made[1];
                EXPECT_EQ(made[2], Reported(!allow));
            }
        }
    }
    EXPECT_EQ(host.AnswersOut(), 0U);
}

// The host hands out what it was handed.
TEST_F(LyingHost, AnAnswerThatIsTheRequestItselfIsReadAsAnAnswer) {
    class Echo final : public RecordingHost {
    public:
        using RecordingHost::RecordingHost;
        int32_t QueryDot(const char* guidJson, const char* mid, char** result) override {
            *result = const_cast<char*>(echoesMid ? mid : guidJson);
            return RecordingHost::QueryDot(guidJson, mid, result);
        }
        bool echoesMid = false;
    } echo(calls);
    Fields().Host() = &echo;
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeCalls(), (Lines{query + " result not preset to null", "FreeResult(unknown)", Reported(true)}));
    const Lines records = TakeRecords();
    EXPECT_EQ(std::count(records.begin(), records.end(), inParseQueryResult.Trace("guid is:guid")), 1);
    echo.echoesMid = true;
    Fields().Mid() = "{}";
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    EXPECT_EQ(TakeCalls()[1], "FreeResult(unknown)");
}

TEST_F(LyingHost, TheResultOfFreeResultIsNotLookedAt) {
    struct Way {
        int32_t queryCode;
        std::string answer;
        Verdict verdict;
    };
    const Way ways[] = {{0, *host.answer, {true, REPLY_ALLOW}},
                        {0, "{", {false, REPLY_BLOCK}},
                        {1007, "{}", {true, REPLY_BLOCK}},
                        {1, "{}", {false, REPLY_BLOCK}}};
    for (const int32_t code : {1, -1, 1007, INT32_MIN, INT32_MAX}) {
        for (const Way& way : ways) {
            host.freeCode = code;
            host.queryCode = way.queryCode;
            host.answer = way.answer;
            EXPECT_EQ(Decide(), way.verdict) << code;
            const Lines made = TakeCalls();
            EXPECT_EQ(made.size(), way.verdict.reply == REPLY_ALLOW ? 4U : 3U);
            EXPECT_EQ(made.back(), Reported(way.verdict.reply == REPLY_BLOCK));
        }
    }
    EXPECT_EQ(host.AnswersOut(), 0U);
}

TEST_F(LyingHost, AllItsResultsWrongAtOnceLeaveTheDecision) {
    for (const int32_t code : {1, -1, 1007, INT32_MIN, INT32_MAX}) {
        host.deleteCode = host.freeCode = sink.result = code;
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW})) << code;
        const Lines made = TakeCalls();
        ASSERT_EQ(made.size(), 4U);
        EXPECT_EQ(made[2], deletion);
        EXPECT_EQ(made[3], Reported(false));
    }
}

// The reply word is the host's memory, and its query can write there.
TEST_F(LyingHost, WhatItsQueryWroteIntoTheReplyIsOverwrittenByWhatIsDecided) {
    struct Way {
        const char* name;
        int32_t queryCode;
        std::optional<std::string> answer;
        uint32_t mode;
        Verdict verdict;
    };
    const std::string good = *host.answer;
    const Way ways[] = {{"network error", 1007, good, MODE_ACTION_TABLE, {true, REPLY_BLOCK}},
                        {"error", 1, good, MODE_ACTION_TABLE, {false, REPLY_BLOCK}},
                        {"no answer", 0, std::nullopt, MODE_ACTION_TABLE, {false, REPLY_BLOCK}},
                        {"all forbid", 0, good, MODE_ALL_FORBID, {true, REPLY_BLOCK}},
                        {"malformed", 0, "{", MODE_ACTION_TABLE, {false, REPLY_BLOCK}},
                        {"guid missing", 0, "{}", MODE_ACTION_TABLE, {false, REPLY_BLOCK}},
                        {"no ids", 0, AnswerText("GUID-1", {}), MODE_ACTION_TABLE, {false, REPLY_BLOCK}},
                        {"no match", 0, AnswerText("GUID-1", {"MID-2"}), MODE_ACTION_TABLE, {false, REPLY_BLOCK}},
                        {"match", 0, good, MODE_ACTION_TABLE, {true, REPLY_ALLOW}}};
    for (const uint32_t written : {uint32_t{REPLY_ALLOW}, uint32_t{REPLY_ALLOW_FLAGGED}, unwritten}) {
        for (const Way& way : ways) {
            SCOPED_TRACE(way.name);
            SetMode(way.mode);
            host.queryCode = way.queryCode;
            host.answer = way.answer;
            Verdict verdict{false, unwritten};
            host.onQuery = [&] { verdict.reply = written; };
            verdict.result = receiver->HandleEvent(&event, rulePointers.data(), 1, &verdict.reply);
            EXPECT_EQ(verdict, way.verdict);
            EXPECT_EQ(TakeCalls().back(), Reported(way.verdict.reply == REPLY_BLOCK));
        }
    }
}

// Calls from within. What each leaves behind is what it leaves at any other time.

struct Call {
    const char* name;
    void (*make)(CMordRecv& receiver, IDotHost& host);
    // What the event gives when the call comes from within the query, which is before everything else is decided.
    Verdict verdict;
    bool reported = true;
};

void SetNumber(CMordRecv& receiver, uint32_t key, uint32_t value) {
    EXPECT_TRUE(receiver.SetProperty(key, &value, sizeof value));
}

void SetActionText(CMordRecv& receiver, std::string text) {
    receiver.SetProperty(PROP_ACTION_JSON, text.data(), static_cast<uint32_t>(text.size() + 1));
}

const Call callsWithin[] = {
    {"AddRef", [](CMordRecv& r, IDotHost&) { EXPECT_EQ(r.AddRef(), 2); }, {true, 1}},
    {"Release", [](CMordRecv& r, IDotHost&) { EXPECT_EQ(r.Release(), 1); }, {true, 1}},
    {"QueryInterface",
     [](CMordRecv& r, IDotHost&) {
         void* out = nullptr;
         EXPECT_EQ(r.QueryInterface(&IID_IMordRev, &out), 0U);
     },
     {true, 1}},
    {"Init once more", [](CMordRecv& r, IDotHost&) { EXPECT_TRUE(r.Init(nullptr)); }, {true, 1}},
    {"Uninit", [](CMordRecv& r, IDotHost&) { EXPECT_TRUE(r.Uninit()); }, {true, 1}},
    {"Uninit and Init",
     [](CMordRecv& r, IDotHost& h) {
         EXPECT_TRUE(r.Uninit());
         EXPECT_TRUE(r.Init(&h));
     },
     {true, 1}},
    {"GetProperty", [](CMordRecv& r, IDotHost&) { EXPECT_TRUE(r.GetProperty(8, 0, 0)); }, {true, 1}},
    {"Start", [](CMordRecv& r, IDotHost&) { EXPECT_TRUE(r.Start()); }, {true, 1}},
    {"Stop", [](CMordRecv& r, IDotHost&) { EXPECT_FALSE(r.Stop()); }, {false, 0}},
    {"SetAllowList", [](CMordRecv& r, IDotHost&) { EXPECT_TRUE(r.SetAllowList(R"({"mid_list":[]})")); }, {false, 0}},
    {"SetAllowList that is refused", [](CMordRecv& r, IDotHost&) { EXPECT_FALSE(r.SetAllowList("{")); }, {true, 1}},
    {"ClearAllowList", [](CMordRecv& r, IDotHost&) { EXPECT_TRUE(r.ClearAllowList()); }, {false, 0}},
    {"an action", [](CMordRecv& r, IDotHost&) { SetActionText(r, R"({"TYPE-1":1})"); }, {true, 1}},
    {"a refused action", [](CMordRecv& r, IDotHost&) { SetActionText(r, "{"); }, {true, 1}},
    {"all forbid", [](CMordRecv& r, IDotHost&) { SetNumber(r, PROP_DEFENDER_MODE, 1); }, {true, 0}},
    {"emergency", [](CMordRecv& r, IDotHost&) { SetNumber(r, PROP_DEFENDER_MODE, 5); }, {true, 1}, false},
    {"an exception mode", [](CMordRecv& r, IDotHost&) { SetNumber(r, PROP_EXCEPTION_MODE, 1); }, {true, 1}},
    {"no sink", [](CMordRecv& r, IDotHost&) { EXPECT_TRUE(r.SetReportSink(nullptr)); }, {true, 1}, false},
};

class CallFromWithin : public LyingHost {
protected:
    // A receiver as it is before each call, whatever the last one did to it.
    void Prepare() {
        Fields().Inited() = true;
        Fields().Started() = true;
        Fields().Mode() = MODE_ACTION_TABLE;
        Fields().ExceptionMode() = EXCEPTION_BLOCK;
        Fields().Actions().clear();
        receiver->SetReportSink(&sink);
        Allow("MID-1", {"TYPE-1"});
        made = false;
        TakeCalls();
    }

    // Makes the call once.
    std::function<void()> Making(const Call& call) {
        return [this, &call] {
            if (!made) {
                made = true;
                call.make(*receiver, host);
            }
        };
    }

    bool made = false;
};

TEST_F(CallFromWithin, QueryDotCountsForTheEventThatAsked) {
    for (const Call& call : callsWithin) {
        SCOPED_TRACE(call.name);
        Prepare();
        host.onQuery = Making(call);
        EXPECT_EQ(Decide(), call.verdict);
        EXPECT_TRUE(made);
        const Lines seen = TakeCalls();
        EXPECT_EQ(seen.back() == Reported(call.verdict.reply == REPLY_BLOCK), call.reported);
        EXPECT_TRUE(Fields().Lock().try_lock());
        Fields().Lock().unlock();
    }
}

TEST_F(CallFromWithin, ReportChangesNothingOfTheEventThatIsOver) {
    for (const Call& call : callsWithin) {
        SCOPED_TRACE(call.name);
        Prepare();
        sink.onReport = Making(call);
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        EXPECT_TRUE(made);
        const Lines seen = TakeCalls();
        ASSERT_EQ(seen.size(), 4U);
        EXPECT_EQ(seen[2], deletion);
        EXPECT_EQ(seen[3], Reported(false));
        EXPECT_TRUE(Fields().Lock().try_lock());
        Fields().Lock().unlock();
        // The next event goes by what was set.
        sink.onReport = nullptr;
        EXPECT_EQ(Decide(), call.verdict);
    }
}

TEST_F(CallFromWithin, AnEventWithinReportWithinAnEventIsReportedOnItsOwn) {
    int depth = 0;
    sink.onReport = [&] {
        if (++depth < 20) {
            EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        }
    };
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(sink.Reports().size(), 20U);
    EXPECT_EQ(host.AnswersOut(), 0U);
}

// Where a record takes the sink away while the report is made from it, there is none to give the report to.
TEST_F(CallFromWithin, ASinkThatIsTakenAwayWhileTheReportIsMadeGetsNone) {
    class Taking final : public FakeRecord {
    public:
        explicit Taking(CMordRecv& object) : receiver(object) {}
        int32_t GetInt64(const char* name, int64_t* value) override {
            receiver.SetReportSink(nullptr);
            return FakeRecord::GetInt64(name, value);
        }
        CMordRecv& receiver;
    } taking(*receiver);
    static_cast<FakeRecord&>(taking) = SampleEvent();
    uint32_t reply = unwritten;
    EXPECT_TRUE(receiver->HandleEvent(&taking, rulePointers.data(), 1, &reply));
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(sink.Reports(), Lines{});
    EXPECT_EQ(TakeRecords().back(), inReport.Trace("==>leave"));
}

// The answer is the memory of the host that gave it; all that comes later goes to the one that is there now.
TEST_F(CallFromWithin, AHostThatIsReplacedWithinItsQueryGetsItsAnswerBackAndTheOtherTheDeletion) {
    CallLog otherCalls;
    RecordingHost other(otherCalls);
    host.onQuery = [&] {
        receiver->Uninit();
        EXPECT_TRUE(receiver->Init(&other));
    };
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeCalls(), (Lines{query, "FreeResult(answer 1)", Reported(false)}));
    EXPECT_EQ(otherCalls.Take(), Lines{deletion});
}

} // namespace
