// The object's one lock: which operations wait for it, and that none holds it across a call to the host.
#include <atomic>
#include <chrono>
#include <functional>
#include <string_view>
#include <thread>

#include "unit/mordRev/lifecycleEvent.h"

namespace {

using Texts = std::vector<std::string>;

class LifecycleLock : public LifecycleEventFixture {
protected:
    // Whether `operation`, on a thread of its own, is still at it after `time` while this thread holds the lock. It
    // ends before this returns.
    bool IsHeldUpFor(std::chrono::milliseconds time, const std::function<void()>& operation) {
        std::atomic<bool> done{false};
        Fields().Lock().lock();
        std::thread thread([&] {
            operation();
            done = true;
        });
        const auto end = std::chrono::steady_clock::now() + time;
        while (!done && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        const bool heldUp = !done;
        Fields().Lock().unlock();
        thread.join();
        return heldUp;
    }

    bool WaitsForTheLock(const std::function<void()>& operation) {
        return IsHeldUpFor(std::chrono::milliseconds(100), operation);
    }

    // However busy the machine is.
    bool EndsWithoutTheLock(const std::function<void()>& operation) {
        return !IsHeldUpFor(std::chrono::seconds(30), operation);
    }

    // Whether another thread could have the lock now.
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

    // For each record that `operation` writes, the function that wrote it and the state of the lock then.
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

TEST_F(LifecycleLock, IsWaitedForByTheOperationsOnTheTables) {
    MakeRunning();
    EXPECT_TRUE(WaitsForTheLock([this] { receiver->SetAllowList(R"({"mid_list":[]})"); }));
    EXPECT_TRUE(WaitsForTheLock([this] { receiver->ClearAllowList(); }));
    EXPECT_TRUE(WaitsForTheLock([this] { SetAction(R"({"tcp":1})"); }));
    EXPECT_TRUE(WaitsForTheLock([this] { receiver->ParseActionJson("{}"); }));
    std::string mid;
    EXPECT_TRUE(WaitsForTheLock([&] { receiver->IsMatchmid("tcp", kit::Views({"A"}).views, &mid); }));
    uint32_t reply = REPLY_BLOCK;
    EXPECT_TRUE(WaitsForTheLock([&] { receiver->ModiyReply("tcp", 0, &reply); })) << "for the look-up in mode 3";
}

TEST_F(LifecycleLock, IsNotWaitedForByTheOthers) {
    MakeRunning();
    uint32_t reply = REPLY_BLOCK;
    EXPECT_TRUE(EndsWithoutTheLock([&] {
        receiver->Uninit();
        Fields().Mid().clear();
        receiver->Init(&host); // all its steps, the service's being asked among them
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
        receiver->ModiyReply("tcp", 0, &reply); // no look-up in this mode
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

TEST_F(LifecycleLock, IsNeverHeldAcrossACallIntoHostOrSink) {
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

TEST_F(LifecycleLock, IsHeldWhileTheRecordsOfTheTablesAreWritten) {
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
    EXPECT_EQ(keysAtTheLastRecord, 1U) << "the list stands already";
    EXPECT_EQ(match("B"), Texts{"IsMatchmid held"});
    EXPECT_EQ(match("A"), Texts{"IsMatchmid held"});
    EXPECT_EQ(LockDuringTheRecordsOf([this] { receiver->ClearAllowList(); }), Texts{"ClearAllowList held"});
    EXPECT_EQ(keysAtTheLastRecord, 1U) << "the list stands still";
    EXPECT_EQ(parseActions("no json"), (Texts{"ParseActionJson held", "ParseActionJson held"}));
    EXPECT_EQ(parseActions(R"({"udp":"bad"})"),
              (Texts{"ParseActionJson held", "ParseActionJson held", "ParseActionJson held"}));
    EXPECT_EQ(parseActions(R"({"tcp":1})"), Texts{"ParseActionJson held"});
    uint32_t reply = REPLY_BLOCK;
    EXPECT_EQ(LockDuringTheRecordsOf([&] { receiver->ModiyReply("tcp", 0, &reply); }), Texts{"ModiyReply held"});
}

TEST_F(LifecycleLock, IsFreeWhileAllOtherRecordsAreWritten) {
    MakeRunning();
    AllowTheMachine();
    SetMode(MODE_ALLOW_AFTER_DECISION);
    EXPECT_EQ(LockDuringTheRecordsOf([this] { Handle(); }),
              (Texts{"HandleEvent free", "HandleEvent free", "ParseQueryResult free", "ParseQueryResult free",
                     "IsMatchmid held", "HandleEventInner free", "HandleEventInner free", "ModiyReply free",
                     "ReportEventHandleRes free", "ReportEventHandleRes free", "ReportEventHandleRes free"}));
}

// A host may change the tables from within its calls, on the same thread: the lock is not recursive.
TEST_F(LifecycleLock, LetsTheHostChangeTheTablesFromWithinItsCalls) {
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
