// A host that throws where an answer goes back to it, which it must not: its exception comes out of HandleEvent, and it
// is not asked to take the same buffer twice.
#include <stdexcept>

#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

struct RefusedAnswer : std::runtime_error {
    RefusedAnswer() : std::runtime_error("refused answer") {}
};

class ThrowingHost : public RecordingHost {
public:
    using RecordingHost::RecordingHost;

    int32_t FreeResult(char* text) override {
        RecordingHost::FreeResult(text);
        throw RefusedAnswer();
    }
};

class HostThatThrows : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        Fields().Host() = &throwing;
        AddRule("GUID-1", "TYPE-1");
        Allow("MID-1", {"TYPE-1"});
    }

    // The exception passes, the answer has gone back once, and nothing comes behind that.
    void ExpectOneReturn(const std::string& returned) {
        EXPECT_THROW(Decide(), RefusedAnswer);
        EXPECT_EQ(TakeCalls(), (Lines{QueryCall({"GUID-1"}, "LOCAL-MID"), returned}));
        EXPECT_EQ(throwing.AnswersOut(), 0U);
    }

    ThrowingHost throwing{calls};
    const std::string enter = inHandleEvent.Trace("==>enter");
};

TEST_F(HostThatThrows, OnANetworkErrorIsAskedOnceAfterTheRecord) {
    throwing.queryCode = DOT_QUERY_NETWORK_ERROR;
    throwing.answer = "{}";
    ExpectOneReturn("FreeResult(answer 1)");
    EXPECT_EQ(TakeRecords(), (Lines{enter, inHandleEvent.Trace("query dot result_json={}"),
                                    inHandleEvent.Trace("query dot network error, exception_mode=2 ,reply=0")}));
}

TEST_F(HostThatThrows, OnAQueryErrorIsAskedOnceAfterTheRecord) {
    throwing.queryCode = 1;
    ExpectOneReturn("FreeResult(null)");
    EXPECT_EQ(TakeRecords(), (Lines{enter, inHandleEvent.Trace("query dot result_json="),
                                    inHandleEvent.Trace(" query dot error, reply=0")}));
}

TEST_F(HostThatThrows, OnAnAnswerThatCannotBeParsedIsAskedOnceAfterTheRecord) {
    throwing.answer = "{";
    ExpectOneReturn("FreeResult(answer 1)");
    EXPECT_EQ(TakeRecords(), (Lines{enter, inHandleEvent.Trace("query dot result_json={"),
                                    inParseQueryResult.Error("data format error."),
                                    inHandleEvent.Trace(" query dot error, reply=0")}));
}

TEST_F(HostThatThrows, OnAParsedAnswerIsAskedOnceAndNoRuleIsDecided) {
    throwing.answer = AnswerText("GUID-1", {"MID-1"});
    ExpectOneReturn("FreeResult(answer 1)");
    EXPECT_EQ(TakeRecords(),
              (Lines{enter, inHandleEvent.Trace("query dot result_json=" + *throwing.answer),
                     inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1")}));
}

TEST_F(HostThatThrows, LeavesTheReceiverAsItWas) {
    throwing.answer = AnswerText("GUID-1", {"MID-1"});
    host.answer = throwing.answer;
    EXPECT_THROW(Decide(), RefusedAnswer);
    Fields().Host() = &host;
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"TYPE-1", {"MID-1"}}}));
}

} // namespace
