#include "decide/receiver.h"

#include <thread>

#include <gtest/gtest.h>

#include "decide/dotHost.h"
#include "decide/libraries.h"
#include "decide/reportSink.h"
#include "policy/memoryDotStore.h"
#include "unit/host/fakeReceiver.h"
#include "unit/host/refusal.h"

using namespace mordhost;
using mordhostTest::FakeReceiver;
using mordhostTest::RefusalOf;

namespace {

using Calls = std::vector<std::string>;

class ReceiverTest : public testing::Test {
protected:
    FakeReceiver object;
    MemoryDotStore store{DotTable{}};
    DotHost dots{store};
    ReportSink sink;
    Policy policy;
};

} // namespace

TEST_F(ReceiverTest, APolicyWithOnlyRulesKeepsTheDefaults) {
    {
        const Receiver receiver(object, policy, dots, sink);
        EXPECT_EQ(object.calls, (Calls{"Init", "SetReportSink", "Start"}));
        object.calls.clear();
    }
    EXPECT_EQ(object.calls, (Calls{"Stop", "SetReportSink null", "Uninit"}));
}

TEST_F(ReceiverTest, TheCompletePolicyIsSetBeforeTheStart) {
    policy.machineId = "HOST";
    policy.defenderMode = 77;
    policy.exceptionMode = 1;
    policy.actions = {R"({"ssh": 1})", {}};
    policy.allowList = {R"({"mid_list": []})", {}};
    const Receiver receiver(object, policy, dots, sink);
    EXPECT_EQ(object.calls,
              (Calls{"Init", "SetProperty 6 HOST 5", "SetProperty 8 77 4", "SetProperty 9 1 4",
                     "SetProperty 20 {\"ssh\": 1} 11", "SetAllowList {\"mid_list\": []}", "SetReportSink", "Start"}));
}

TEST_F(ReceiverTest, AnObjectThatCannotBeInitialisedIsNotUsed) {
    object.initResult = false;
    EXPECT_THROW(Receiver(object, policy, dots, sink), LoadError);
    EXPECT_EQ(object.calls, Calls{"Init"});
}

TEST_F(ReceiverTest, ADocumentThatTheLibraryRefusesIsReportedWithItsPosition) {
    policy.allowList = {R"({"mid_list": []})", {"p.json", 3, 5}};
    object.allowListResult = false;
    EXPECT_EQ(RefusalOf([&] { Receiver(object, policy, dots, sink); }),
              "p.json:3:5: the library refuses the allow list");
    policy.allowList.reset();
    policy.actions = {R"({"ssh": 1})", {"p.json", 4, 6}};
    object.propertyResult = false;
    EXPECT_EQ(RefusalOf([&] { Receiver(object, policy, dots, sink); }),
              "p.json:4:6: the library refuses the action document");
}

TEST_F(ReceiverTest, AnEventIsPassedWithItsRulesInOrder) {
    policy.rules = {{"A", "x", {}, {}, {}}, {"B", "x", {}, {}, {}}, {"C", "x", {}, {}, {}}};
    Receiver receiver(object, policy, dots, sink);
    object.calls.clear();
    object.reply = REPLY_ALLOW_FLAGGED;
    object.eventResult = false;
    ConnectionEvent event;
    event.flags = 16;
    const mordhost::Answer answer = receiver.Decide(event, {0, 2});
    EXPECT_EQ(object.calls, Calls{"HandleEvent 16 A C"});
    EXPECT_EQ(answer.reply, 2U);
    EXPECT_FALSE(answer.settled);
}

TEST_F(ReceiverTest, TheDurationIsThatOfHandleEvent) {
    policy.rules = {{"A", "x", {}, {}, {}}};
    object.onEvent = [](IDotHost*, IReportSink*) { std::this_thread::sleep_for(std::chrono::milliseconds(20)); };
    Receiver receiver(object, policy, dots, sink);
    EXPECT_GE(receiver.Decide({}, {0}).duration,
              std::chrono::milliseconds(15)); // the sleep may end early with a coarse timer
}
