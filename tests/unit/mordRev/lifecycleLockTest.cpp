// The receiver's lock: which operations wait for it, what they do under it, and that no call to the host is made under
// it.
#include <atomic>
#include <chrono>
#include <cstring>
#include <functional>
#include <string_view>
#include <thread>

#include "unit/mordRev/lifecycleEvent.h"

namespace {

using Texts = std::vector<std::string>;

class LifecycleLock : public LifecycleEventFixture {
protected:
    // Runs `operation` on another thread while this thread holds the lock. Returns whether it was still running `time`
    // after it had begun. Then calls `beforeUnlock`, unlocks and waits for the end of `operation`.
    bool RunsLongerThan(
        std::chrono::milliseconds time, const std::function<void()>& operation,
        const std::function<void()>& beforeUnlock = [] {}) {
        std::atomic<bool> begun{false};
        std::atomic<bool> done{false};
        Fields().Lock().lock();
        std::thread thread([&] {
            begun = true;
            operation();
            done = true;
        });
        while (!begun) {
            std::this_thread::yield();
        }
        const auto end = std::chrono::steady_clock::now() + time;
        while (!done && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        const bool stillRunning = !done;
        beforeUnlock();
        Fields().Lock().unlock();
        thread.join();
        return stillRunning;
    }

    // The thread has begun the operation and needs microseconds for it, so that only the lock can delay its end.
    bool WaitsForTheLock(
        const std::function<void()>& operation, const std::function<void()>& beforeUnlock = [] {}) {
        return RunsLongerThan(std::chrono::milliseconds(100), operation, beforeUnlock);
    }

    // The limit holds on a busy machine too: only an operation that waits reaches it.
    bool EndsWithoutTheLock(const std::function<void()>& operation) {
        return !RunsLongerThan(std::chrono::seconds(30), operation);
    }

    // Returns whether another thread can take the lock now.
    bool IsFree() {
        bool free = false;
        std::thread([&] {
            free = Fields().Lock().try_lock();
            if (free) {
                Fields().Lock().unlock();
            }
        }).join();
        return free;
    }

    // Returns, for each record of `operation`, the function that wrote it and the state of the lock at that time.
    Texts LockDuringTheRecordsOf(const std::function<void()>& operation) {
        Texts seen;
        siblings.logsRecords = true;
        siblings.calls.onAdd = [&](const std::string& call) {
            constexpr std::string_view before = "][CMordRecv::";
            const size_t begin = call.find(before) + before.size();
            seen.push_back(call.substr(begin, call.find(']', begin) - begin) + (IsFree() ? " free" : " held"));
            keysAtTheLastRecord = Fields().AllowedMids().size();
        };
        operation();
        siblings.calls.onAdd = nullptr;
        return seen;
    }

    size_t keysAtTheLastRecord = 0; // of the allow list
};

TEST_F(LifecycleLock, SetPropertyWaitsForItToReplaceTheActionTable) {
    MakeRunning();
    EXPECT_TRUE(WaitsForTheLock([this] { SetAction(R"({"tcp":1})"); }));
}

// The holder of the lock changes the text and the tables while an operation waits: the operation must see the changes.
TEST_F(LifecycleLock, SetAllowListReadsItsTextUnderTheLock) {
    char text[] = R"({"mid_list":[{"mid":"A","protocol":["tcp"]}]})";
    bool accepted = false;
    EXPECT_TRUE(
        WaitsForTheLock([&] { accepted = receiver->SetAllowList(text); }, [&] { *std::strchr(text, 'A') = 'B'; }));
    EXPECT_TRUE(accepted);
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"tcp", {"B"}}}));
}

TEST_F(LifecycleLock, ClearAllowListRemovesEntriesOfTheLastHolder) {
    EXPECT_TRUE(WaitsForTheLock([this] { receiver->ClearAllowList(); },
                                [this] {
                                    Fields().SetAllowedMids({{"tcp", {"A"}}});
                                }));
    EXPECT_EQ(Fields().AllowedMids(), AllowTable());
}

TEST_F(LifecycleLock, ParseActionJsonReadsItsTextUnderTheLock) {
    char text[] = R"({"tcp":0})";
    bool accepted = false;
    EXPECT_TRUE(
        WaitsForTheLock([&] { accepted = receiver->ParseActionJson(text); }, [&] { *std::strchr(text, '0') = '1'; }));
    EXPECT_TRUE(accepted);
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"tcp", true}}));
}

TEST_F(LifecycleLock, LookupsSeeTheTablesOfTheLastHolder) {
    std::string mid;
    bool matched = false;
    EXPECT_TRUE(WaitsForTheLock([&] { matched = receiver->IsMatchmid("tcp", kit::Views({"A"}).views, &mid); },
                                [this] {
                                    Fields().SetAllowedMids({{"tcp", {"A"}}});
                                }));
    EXPECT_TRUE(matched);
    EXPECT_EQ(mid, "A");
    uint32_t reply = REPLY_BLOCK;
    EXPECT_TRUE(WaitsForTheLock([&] { receiver->ModiyReply("tcp", 0, &reply); },
                                [this] {
                                    Fields().Actions() = {{"tcp", true}};
                                }));
    EXPECT_EQ(reply, REPLY_ALLOW);
}

TEST_F(LifecycleLock, OtherOperationsDoNotWaitForIt) {
    MakeRunning();
    uint32_t reply = REPLY_BLOCK;
    EXPECT_TRUE(EndsWithoutTheLock([&] {
        receiver->Uninit();
        Fields().Mid().clear();
        receiver->Init(&host); // including the query of the machine id service
        receiver->Start();
        receiver->Stop();
        receiver->GetProperty(0, 0, 0);
        receiver->SetReportSink(&sink);
        SetMode(MODE_EMERGENCY);
        SetExceptionMode(EXCEPTION_ALLOW);
        std::string mid = "B";
        receiver->SetProperty(PROP_MID, mid.data(), 1);
        receiver->GetLocalMid();
        receiver->Uninit();
        receiver->ModiyReply("tcp", 0, &reply); // no lookup in this mode
        Handle();
    }));
}

TEST_F(LifecycleLock, IsFreeAfterEachOperation) {
    MakeRunning();
    const std::function<void()> operations[] = {
        [this] { receiver->SetAllowList(R"({"mid_list":[]})"); },
        [this] { receiver->SetAllowList("no json"); },
        [this] { receiver->SetAllowList("{}"); },
        [this] { receiver->ClearAllowList(); },
        [this] { SetAction(R"({"tcp":1})"); },
        [this] { SetAction("no json"); },
        [this] { Handle(); },
    };
    for (const auto& operation : operations) {
        operation();
        EXPECT_TRUE(IsFree());
    }
}

TEST_F(LifecycleLock, IsFreeDuringCallsToHostAndSink) {
    MakeRunning();
    AllowTheMachine();
    Texts seen;
    calls.onAdd = [&](const std::string& call) {
        seen.push_back(call.substr(0, call.find('(')) + (IsFree() ? " free" : " held"));
    };
    EXPECT_EQ(Handle(), REPLY_ALLOW);
    calls.onAdd = nullptr;
    EXPECT_EQ(seen, (Texts{"QueryDot free", "FreeResult free", "DeleteDot free", "Report free"}));
}

TEST_F(LifecycleLock, IsHeldWhileOperationsOnTheTablesLog) {
    MakeRunning();
    const auto setAllowList = [this](const char* text) {
        return LockDuringTheRecordsOf([this, text] { receiver->SetAllowList(text); });
    };
    const auto parseActions = [this](const char* text) {
        return LockDuringTheRecordsOf([this, text] { receiver->ParseActionJson(text); });
    };
    const auto match = [this](const char* mid) {
        std::string matched;
        return LockDuringTheRecordsOf([&] { receiver->IsMatchmid("tcp", kit::Views({mid}).views, &matched); });
    };
    EXPECT_EQ(setAllowList("no json"), (Texts{"SetAllowList held", "SetAllowList held"}));
    EXPECT_EQ(setAllowList("{}"), (Texts{"SetAllowList held", "SetAllowList held"}));
    EXPECT_EQ(setAllowList(R"({"mid_list":1})"), (Texts{"SetAllowList held", "SetAllowList held"}));
    EXPECT_EQ(match("A"), Texts{"IsMatchmid held"}) << "the list is empty";
    EXPECT_EQ(setAllowList(R"({"mid_list":[{"mid":"A","protocol":["tcp"]}]})"), Texts{"SetAllowList held"});
    EXPECT_EQ(keysAtTheLastRecord, 1U) << "the record follows the change";
    EXPECT_EQ(match("B"), Texts{"IsMatchmid held"});
    EXPECT_EQ(match("A"), Texts{"IsMatchmid held"});
    EXPECT_EQ(LockDuringTheRecordsOf([this] { receiver->ClearAllowList(); }), Texts{"ClearAllowList held"});
    EXPECT_EQ(keysAtTheLastRecord, 1U) << "the record precedes the change";
    EXPECT_EQ(parseActions("no json"), (Texts{"ParseActionJson held", "ParseActionJson held"}));
    EXPECT_EQ(parseActions(R"({"udp":"bad"})"),
              (Texts{"ParseActionJson held", "ParseActionJson held", "ParseActionJson held"}));
    EXPECT_EQ(parseActions(R"({"tcp":1})"), Texts{"ParseActionJson held"});
    uint32_t reply = REPLY_BLOCK;
    EXPECT_EQ(LockDuringTheRecordsOf([&] { receiver->ModiyReply("tcp", 0, &reply); }), Texts{"ModiyReply held"});
}

TEST_F(LifecycleLock, IsFreeWhileOtherOperationsLog) {
    MakeRunning();
    AllowTheMachine();
    SetMode(MODE_ALLOW_AFTER_DECISION);
    EXPECT_EQ(LockDuringTheRecordsOf([this] { Handle(); }),
              (Texts{"HandleEvent free", "HandleEvent free", "ParseQueryResult free", "ParseQueryResult free",
                     "IsMatchmid held", "HandleEventInner free", "HandleEventInner free", "ModiyReply free",
                     "ReportEventHandleRes free", "ReportEventHandleRes free", "ReportEventHandleRes free"}));
}

// On the same thread: the lock is not recursive.
TEST_F(LifecycleLock, HostMayChangeTheTablesWithinItsCallbacks) {
    MakeRunning();
    host.onQuery = [this] { AllowTheMachine(); };
    sink.onReport = [this] {
        receiver->ClearAllowList();
        SetAction(R"({"tcp":1})");
    };
    EXPECT_EQ(Handle(), REPLY_ALLOW);
    EXPECT_EQ(Fields().AllowedMids(), AllowTable());
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"tcp", true}}));
}

} // namespace
