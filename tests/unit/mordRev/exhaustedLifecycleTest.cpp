// Memory that runs out from the creation through the factory to the first event: each operation fails until it passes,
// and everything works afterwards. Each case begins in a process that has nothing yet.
#include <array>
#include <vector>

#include "kit/host/countingHost.h"
#include "kit/host/fakeRecord.h"
#include "kit/host/receiverFields.h"
#include "kit/system/quietSystem.h"
#include "logging/logState.h"
#include "unit/mordRev/exhaustedMemory.h"

extern "C" uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out);

namespace {

using namespace exhausted;

size_t recordCount = 0;

class ExhaustedLifecycle : public testing::Test {
protected:
    void SetUp() override {
        kit::takeRecord = [](const WideChar*, int32_t) { ++recordCount; };
        host.answer = R"({"GUID":{"value":1,"mid":{"MID":1}}})";
        std::timed_mutex lock;
        WarmUp(lock);
    }

    // Lets the first allocation of `operation` fail, then the second, and so on until it passes. Returns how often it
    // failed.
    template <typename Operation>
    static size_t FailUntilItPasses(const Operation& operation) {
        size_t failures = 0;
        for (size_t nth = 1; nth < 1000; ++nth) {
            for (const bool lasting : {true, false}) {
                const Failure failure = FailOne(nth, lasting, operation);
                if (failure.kind == kit::AllocationKind::None) {
                    return failures;
                }
                ++failures;
            }
        }
        ADD_FAILURE() << "the operation never passed";
        return failures;
    }

    IMordRev* Create() {
        void* out = nullptr;
        EXPECT_EQ(CreateZelkObject(&IID_IMordRev, &out), RESULT_OK);
        return static_cast<IMordRev*>(out);
    }

    // The receiver decides an event, of which the host is asked and told.
    void ExpectItDecides(IMordRev& receiver) {
        receiver.Start();
        receiver.SetReportSink(&sink);
        EXPECT_TRUE(receiver.SetAllowList(R"({"mid_list":[{"mid":"MID","protocol":["TYPE"]}]})"));
        kit::FakeRecord event = kit::MakeFullRecord("", "");
        kit::FakeRecord rule = kit::MakeFullRecord("GUID", "TYPE");
        IEventRecord* rules[] = {&rule};
        uint32_t reply = 77;
        const int deletions = host.deletions;
        const int reports = sink.reports;
        EXPECT_TRUE(receiver.HandleEvent(&event, rules, 1, &reply));
        EXPECT_EQ(reply, REPLY_ALLOW);
        EXPECT_EQ(host.deletions, deletions + 1);
        EXPECT_EQ(sink.reports, reports + 1);
        EXPECT_EQ(host.answersOut, 0);
    }

    kit::CountingHost host;
    kit::CountingSink sink;
};

TEST_F(ExhaustedLifecycle, OfTheCreationIsThrownAndALaterCallCreates) {
    void* out = nullptr;
    const long held = kit::BlocksHeld();
    EXPECT_GE(FailUntilItPasses([&] {
                  EXPECT_EQ(kit::BlocksHeld(), held);
                  CreateZelkObject(&IID_IMordRev, &out);
              }),
              1U);
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(MordRevFields(static_cast<CMordRecv&>(*static_cast<IMordRev*>(out))).ReferenceCount(), 1);
    EXPECT_TRUE(Create()->Init(&host));
    ExpectItDecides(*Create());
}

TEST_F(ExhaustedLifecycle, OfTheFirstInitLeavesAnObjectThatALaterOneInitialises) {
    IMordRev* const receiver = Create();
    MordRevFields fields(static_cast<CMordRecv&>(*receiver));
    bool result = false;
    EXPECT_GE(FailUntilItPasses([&] {
                  EXPECT_FALSE(fields.Inited());
                  result = receiver->Init(&host);
                  receiver->Uninit();
              }),
              1U);
    EXPECT_TRUE(result);
    EXPECT_EQ(fields.Mid(), "HOST");
    EXPECT_TRUE(LogFileEnabled);
    EXPECT_TRUE(receiver->Init(&host));
    recordCount = 0;
    ExpectItDecides(*receiver);
    EXPECT_GT(recordCount, 10U);
}

// A receiver whose machine id was never had, each time, as after an Init that failed on the way to it.
TEST_F(ExhaustedLifecycle, OfALaterInitLeavesNothingBehind) {
    IMordRev* const receiver = Create();
    MordRevFields fields(static_cast<CMordRecv&>(*receiver));
    for (const bool logs : {false, true}) {
        ASSERT_TRUE(receiver->Init(&host));
        const size_t failures = Sweep(
            fields.Lock(), [&] { receiver->Init(&host); },
            [&] {
                receiver->Uninit();
                fields.Mid() = std::string();
                LogFileEnabled = logs;
            },
            [&](const Failure& failure) {
                EXPECT_EQ(fields.Inited(), !failure.thrown);
                EXPECT_TRUE(receiver->Init(&host));
                EXPECT_EQ(fields.Mid(), "HOST");
                ExpectItDecides(*receiver);
                receiver->ClearAllowList();
            });
        EXPECT_GT(failures, 0U);
    }
}

// What the runtime keeps of the first use of a stream or of the converter is had at the first record.
TEST_F(ExhaustedLifecycle, OfTheFirstEventIsBadAllocAndTheNextOneIsDecided) {
    IMordRev* const receiver = Create();
    ASSERT_TRUE(receiver->Init(&host));
    receiver->Start();
    receiver->SetReportSink(&sink);
    ASSERT_TRUE(receiver->SetAllowList(R"({"mid_list":[{"mid":"MID","protocol":["TYPE"]}]})"));
    kit::FakeRecord event = kit::MakeFullRecord("", "");
    kit::FakeRecord rule = kit::MakeFullRecord("GUID", "TYPE");
    IEventRecord* rules[] = {&rule};
    uint32_t reply = 0;
    const size_t failures = FailUntilItPasses([&] { receiver->HandleEvent(&event, rules, 1, &reply); });
    EXPECT_GE(failures, 10U); // at least five allocations, each of which fails alone and with all further ones
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(host.answersOut, 0);
    ExpectItDecides(*receiver);
}

} // namespace
