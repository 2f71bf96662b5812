// No lock is held across a call into the host: from each of them the host may come back into the same receiver.
#include <thread>

#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

// Calls back from every operation of the host.
class ReentrantHost : public RecordingHost {
public:
    using RecordingHost::RecordingHost;

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override {
        const int32_t result = RecordingHost::DeleteDot(guid, mid, kind, type);
        onDelete();
        return result;
    }
    int32_t FreeResult(char* text) override {
        const int32_t result = RecordingHost::FreeResult(text);
        onFree();
        return result;
    }

    std::function<void()> onDelete = [] {};
    std::function<void()> onFree = [] {};
};

// Calls back from the first read of each call.
class ReentrantRecord : public FakeRecord {
public:
    int32_t GetInt32(const char* name, int32_t* value) override {
        onRead();
        return FakeRecord::GetInt32(name, value);
    }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        onRead();
        return FakeRecord::GetString(name, buffer, size);
    }

    std::function<void()> onRead = [] {};
};

class Reentry : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
        Fields().Host() = &reentrant;
        reentrant.answer = AnswerText("GUID-1", {"MID-1"});
        Allow("MID-1", {"TYPE-1"});
        SetActions(R"({"TYPE-9":1})");
    }

    bool LockIsFree() {
        bool isFree = false;
        std::thread([this, &isFree] {
            isFree = Fields().Lock().try_lock();
            if (isFree) {
                Fields().Lock().unlock();
            }
        }).join();
        return isFree;
    }

    // Everything that takes the lock, and an event of its own; not again from within that.
    std::function<void()> ComeBack() {
        return [this] {
            if (within) {
                return;
            }
            ++returns;
            ASSERT_TRUE(LockIsFree()); // what follows would wait for ever
            within = true;
            EXPECT_TRUE(receiver->ClearAllowList());
            EXPECT_TRUE(receiver->SetAllowList(AllowText("MID-1", {"TYPE-1"}).c_str()));
            char actions[] = R"({"TYPE-9":1})";
            EXPECT_TRUE(receiver->SetProperty(PROP_ACTION_JSON, actions, 1));
            EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
            within = false;
        };
    }

    void ExpectDecided() {
        EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
        EXPECT_GT(returns, 0);
        EXPECT_EQ(reentrant.AnswersOut(), 0U);
        EXPECT_EQ(sink.Reports().back(),
                  (ExpectedReport{.guids = {"GUID-1"}, .type = "TYPE-1", .block = false}.Text()));
    }

    ReentrantHost reentrant{calls};
    bool within = false;
    int returns = 0;
};

TEST_F(Reentry, FromQueryDotDoesNotDeadlock) {
    reentrant.onQuery = ComeBack();
    ExpectDecided();
}

TEST_F(Reentry, FromFreeResultDoesNotDeadlock) {
    reentrant.onFree = ComeBack();
    ExpectDecided();
}

TEST_F(Reentry, FromDeleteDotDoesNotDeadlock) {
    reentrant.onDelete = ComeBack();
    ExpectDecided();
}

TEST_F(Reentry, FromReportDoesNotDeadlock) {
    sink.onReport = ComeBack();
    ExpectDecided();
}

TEST_F(Reentry, FromTheReadOfARecordDoesNotDeadlock) {
    ReentrantRecord rule;
    rule.String("guid", "GUID-1").String("type", "TYPE-1");
    rulePointers = {&rule};
    rule.onRead = ComeBack();
    ExpectDecided();
    EXPECT_EQ(returns, 12); // each of the two reads of a text, six texts of a rule in all
}

TEST_F(Reentry, WhatTheHostSetsWithinAQueryDecidesThisEvent) {
    Fields().SetAllowedMids({});
    reentrant.onQuery = [this] { receiver->SetAllowList(AllowText("MID-1", {"TYPE-1"}).c_str()); };
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    reentrant.onQuery = [this] { receiver->ClearAllowList(); };
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    reentrant.onQuery = [this] { receiver->ParseActionJson(R"({"TYPE-1":1})"); };
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_ALLOW}));
}

TEST_F(Reentry, WhatTheHostSetsWithinADeletionDecidesTheLastWord) {
    event.Int32("flags", EVENT_FLAG_REPLY_TWO);
    reentrant.onDelete = [this] { SetMode(MODE_ALLOW_AFTER_DECISION); };
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW_FLAGGED}));
    const Lines records = TakeRecords();
    EXPECT_EQ(std::count(records.begin(), records.end(), inModiyReply.Trace("defender mode=4")), 1);
}

TEST_F(Reentry, AStopWithinTheQueryLeavesTheRulesUndecided) {
    reentrant.onQuery = [this] { receiver->Stop(); };
    EXPECT_EQ(Decide(), (Verdict{false, REPLY_BLOCK}));
    receiver->Start();
    reentrant.onQuery = {};
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
}

TEST_F(Reentry, ASinkThatIsTakenAwayWithinTheQueryGetsNoReport) {
    reentrant.onQuery = [this] { receiver->SetReportSink(nullptr); };
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(sink.Reports(), Lines{});
    EXPECT_EQ(TakeRecords().back(), inReport.Error("param error"));
}

} // namespace
