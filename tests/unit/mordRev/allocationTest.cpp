// What deciding costs: no copy of the answer for each rule, and nothing for logging that is off.
#include "kit/heap/countedHeap.h"
#include "kit/host/countingHost.h"
#include "kit/host/decisionSamples.h"
#include "kit/host/receiverFixture.h"
#include "kit/system/countedClock.h"
#include "mordRev/src/recordReader.h"

namespace {

std::string Guid(size_t i) {
    std::string digits = std::to_string(i);
    return "a guid that is too long to be kept without an allocation " + std::string(8 - digits.size(), '0') + digits;
}

// An answer with `count` guids, one machine id each.
std::string AnswerWith(size_t count) {
    std::string text = "{";
    for (size_t i = 0; i < count; ++i) {
        text += (i == 0 ? "\"" : ",\"") + Guid(i) + R"(":{"value":1,"mid":{"MID-1":1}})";
    }
    return text + "}";
}

// Tells where the allocations stood each time that its guid was asked for.
class SamplingRule : public kit::FakeRecord {
public:
    SamplingRule(std::string guid, const kit::AllocationCounter*& counter,
                 std::vector<std::pair<size_t, size_t>>& samples)
        : FakeRecord(kit::MakeFullRecord(guid, "TYPE-1")), m_counter(counter), m_samples(samples) {}

    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        if (m_counter != nullptr && buffer == nullptr && std::strcmp(name, "guid") == 0) {
            m_samples.emplace_back(m_counter->Calls(), m_counter->Bytes());
        }
        return FakeRecord::GetString(name, buffer, size);
    }

private:
    const kit::AllocationCounter*& m_counter;
    std::vector<std::pair<size_t, size_t>>& m_samples;
};

class Allocations : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        MakeRunning();
        LogFileEnabled = false;
        Fields().Host() = &countingHost;
        Fields().ReportSink() = &countingSink;
        Fields().SetAllowedMids({{"TYPE-1", {"OTHER"}}});
        const std::lock_guard first(Fields().Lock()); // some systems allocate at the first use of a lock
    }

    // The allocations, and their bytes, that each rule took of an event with a thousand rules that do not match and an
    // answer of `guids` guids.
    std::vector<std::pair<size_t, size_t>> CostOfEachRule(size_t guids) {
        constexpr size_t ruleCount = 1000;
        countingHost.answer = AnswerWith(guids);
        const kit::AllocationCounter* current = nullptr;
        std::vector<std::pair<size_t, size_t>> samples;
        samples.reserve(3 * ruleCount);
        std::vector<SamplingRule> rules;
        rules.reserve(ruleCount);
        std::vector<IEventRecord*> pointers;
        for (size_t i = 0; i < ruleCount; ++i) {
            pointers.push_back(&rules.emplace_back(Guid(i % guids), current, samples));
        }
        kit::FakeRecord event = kit::MakeFullRecord("", "");
        uint32_t reply = 0;
        {
            const kit::AllocationCounter counter;
            current = &counter;
            EXPECT_FALSE(receiver->HandleEvent(&event, pointers.data(), ruleCount, &reply));
            current = nullptr;
        }
        // The guids are asked for in three rounds: for the request, for the rules, for the report.
        EXPECT_EQ(samples.size(), 3 * ruleCount);
        std::vector<std::pair<size_t, size_t>> costs;
        for (size_t i = ruleCount; i + 1 < 2 * ruleCount; ++i) {
            costs.emplace_back(samples[i + 1].first - samples[i].first, samples[i + 1].second - samples[i].second);
        }
        return costs;
    }

    // What `operation` allocates.
    template <typename Operation>
    static size_t CountOf(const Operation& operation) {
        const kit::AllocationCounter counter;
        operation();
        return counter.Calls();
    }

    kit::CountingHost countingHost;
    kit::CountingSink countingSink;
};

TEST_F(Allocations, OfARuleDoNotGrowWithTheAnswer) {
    const auto small = CostOfEachRule(10);
    EXPECT_GT(small.front().first, 0U);
    EXPECT_EQ(small, CostOfEachRule(1000));
    EXPECT_EQ(small, CostOfEachRule(5000));
}

TEST_F(Allocations, OfACallForOneRuleDoNotGrowWithTheTable) {
    kit::FakeRecord event = kit::MakeFullRecord("", "");
    kit::FakeRecord rule = kit::MakeFullRecord(Guid(0), "TYPE-1");
    std::vector<std::pair<size_t, size_t>> costs;
    for (const size_t size : {1U, 10U, 10000U}) {
        QueryResultTable table;
        for (size_t i = 0; i < size; ++i) {
            kit::InsertMids(table, Guid(i), {"MID-1"});
        }
        uint32_t reply = 1;
        const kit::AllocationCounter counter;
        receiver->HandleEventInner(&event, &rule, table, &reply);
        costs.emplace_back(counter.Calls(), counter.Bytes());
        EXPECT_EQ(reply, 0U);
    }
    EXPECT_EQ(costs[0], costs[1]);
    EXPECT_EQ(costs[0], costs[2]);
}

TEST_F(Allocations, OfAnEntryOfATableOfItsOwnAreNoCopyOfTheOthers) {
    std::vector<std::string> guids;
    for (size_t i = 0; i < 1000; ++i) {
        guids.push_back(Guid(i));
    }
    QueryResultTable table;
    EXPECT_LT(CountOf([&] {
                  for (const std::string& guid : guids) {
                      table.Insert(guid, {}, nullptr);
                  }
              }),
              100U);
}

// A long text takes what it asks for and little more, however long it says that it is.
TEST_F(Allocations, OfALongTextAreOneOfItsSize) {
    kit::FakeRecord record = kit::MakeFullRecord("", "");
    const size_t size = std::strlen(kit::fullRecordText) + 1;
    const kit::AllocationCounter counter;
    const RecordText text(&record, "note");
    EXPECT_EQ(counter.Calls(), 1U);
    EXPECT_LE(counter.Bytes(), size + 8);
    EXPECT_EQ(text.View(), kit::fullRecordText);
}

TEST_F(Allocations, OfACopyOfTheTableAreNone) {
    QueryResultTable table;
    for (size_t i = 0; i < 1000; ++i) {
        kit::InsertMids(table, Guid(i), {"MID-1"});
    }
    EXPECT_EQ(CountOf([&table] { const QueryResultTable copy = table; }), 0U);
}

// What stands beside the list goes with it: a host that sends its list every minute for a year holds no more for it.
TEST_F(Allocations, OfAListInPlaceOfAnotherAreTheSameEachTime) {
    const std::string text = kit::AllowText("MID-1", {"TYPE-1", "TYPE-2"});
    std::vector<std::pair<size_t, size_t>> costs;
    for (int i = 0; i < 100; ++i) {
        const kit::AllocationCounter counter;
        EXPECT_TRUE(receiver->SetAllowList(text.c_str()));
        costs.emplace_back(counter.Calls(), counter.Bytes());
    }
    EXPECT_EQ(costs, decltype(costs)(100, costs.front()));
}

TEST_F(Allocations, OfAListThatWasClearedAreAllGivenBack) {
    const std::string text = kit::AllowText("MID-1", {"TYPE-1", "TYPE-2"});
    receiver->SetAllowList(text.c_str());     // what is made once in a process is there from now on
    receiver = std::make_unique<CMordRecv>(); // one that never had a list
    const long held = kit::BlocksHeld();
    EXPECT_TRUE(receiver->SetAllowList(text.c_str()));
    EXPECT_GT(kit::BlocksHeld(), held);
    receiver->ClearAllowList();
    EXPECT_EQ(kit::BlocksHeld(), held);
}

// All-forbid mode, which keeps the answer, is the host's loss and none of the library's.
TEST_F(Allocations, OfAnEventAndOfItsDocumentsAreAllGivenBack) {
    kit::FakeRecord event = kit::MakeFullRecord("", "");
    std::vector<kit::FakeRecord> rules;
    std::vector<IEventRecord*> pointers;
    for (size_t i = 0; i < 100; ++i) {
        rules.push_back(kit::MakeFullRecord(Guid(i), "TYPE-1"));
    }
    std::transform(rules.begin(), rules.end(), std::back_inserter(pointers),
                   [](kit::FakeRecord& rule) { return &rule; });
    countingHost.answer = AnswerWith(100);
    uint32_t reply = 0;
    const auto decide = [&] {
        for (const uint32_t mode : {1U, 3U, 4U, 5U}) {
            SetMode(mode);
            receiver->HandleEvent(&event, pointers.data(), 100, &reply);
        }
        receiver->ParseActionJson(R"({"an action with a name that is long":1})");
        receiver->ParseActionJson("{");
        receiver->SetAllowList("{");
    };
    decide(); // what is made once in a process, and the action, are there from now on
    const long held = kit::BlocksHeld();
    decide();
    EXPECT_EQ(kit::BlocksHeld(), held);
}

TEST_F(Allocations, OfAnObjectThatDestroysItselfAreAllGivenBack) {
    const auto makeAndDestroy = [] {
        CMordRecv* const object = CMordRecv::ObjectCreator::Create();
        object->SetAllowList(kit::AllowText("MID-1", {"TYPE-1"}).c_str());
        object->ParseActionJson(R"({"an action with a name that is long":1})");
        static_cast<Base::CZelkObjectBase*>(object)->DestroySelf();
    };
    makeAndDestroy();
    const long held = kit::BlocksHeld();
    makeAndDestroy();
    EXPECT_EQ(kit::BlocksHeld(), held);
}

TEST_F(Allocations, OfOperationsThatDoNothingButLogAreNoneWhenLoggingIsOff) {
    kit::FakeRecord event = kit::MakeFullRecord("", "");
    IEventRecord* rules[] = {&event};
    uint32_t reply = 0;
    receiver->ClearAllowList();
    EXPECT_EQ(CountOf([&] { receiver->ClearAllowList(); }), 0U);
    EXPECT_EQ(CountOf([&] { receiver->SetProperty(PROP_MID, nullptr, 1); }), 0U);
    EXPECT_EQ(CountOf([&] { receiver->HandleEvent(&event, rules, 1, nullptr); }), 0U);
    EXPECT_EQ(CountOf([&] { receiver->HandleEvent(nullptr, rules, 1, &reply); }), 0U);
    EXPECT_EQ(CountOf([&] { receiver->ReportEventHandleRes(nullptr, rules, 1, 0, false); }), 0U);
    EXPECT_EQ(CountOf([&] { receiver->HandleEventInner(nullptr, &event, {}, &reply); }), 0U);
    receiver->Stop();
    EXPECT_EQ(CountOf([&] { receiver->HandleEventInner(&event, &event, {}, &reply); }), 0U);
    SetMode(MODE_ALLOW_AFTER_DECISION);
    EXPECT_EQ(CountOf([&] { receiver->ModiyReply("", 0, &reply); }), 0U);
}

// No rule has a type, which would be read into a buffer.
TEST_F(Allocations, OfEmergencyAndDisconnectAnswersAreNone) {
    kit::FakeRecord event;
    kit::FakeRecord rule;
    IEventRecord* rules[] = {&rule};
    uint32_t reply = 0;
    event.Int32("flags", EVENT_FLAG_DISCONNECT);
    EXPECT_EQ(CountOf([&] { receiver->HandleEvent(&event, rules, 1, &reply); }), 0U);
    EXPECT_EQ(reply, REPLY_ALLOW);
    event.Int32("flags", 0);
    SetMode(MODE_EMERGENCY);
    EXPECT_EQ(CountOf([&] { receiver->HandleEvent(&event, rules, 1, &reply); }), 0U);
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(countingHost.queries, 0);
    EXPECT_EQ(countingSink.reports, 0);
}

class LoggingOff : public Allocations {
protected:
    // Goes through every log site of a decision, of both documents and of both operations of the allow list.
    void DoEverything() {
        kit::FakeRecord event = kit::MakeFullRecord("", "");
        kit::FakeRecord rule = kit::MakeFullRecord(Guid(0), "TYPE-1");
        IEventRecord* rules[] = {&rule};
        uint32_t reply = 0;
        receiver->SetAllowList("{");
        receiver->SetAllowList("{}");
        receiver->SetAllowList(R"({"mid_list":1})");
        receiver->SetAllowList(kit::AllowText("MID-1", {"TYPE-1"}).c_str());
        receiver->ParseActionJson("{");
        receiver->ParseActionJson("{}");
        receiver->ParseActionJson(R"({"TYPE-1":1,"":1})");
        for (const char* const answer : {"", "{", R"({"g":1})", R"({"g":{"value":0}})", R"({"g":{"value":1}})"}) {
            countingHost.answer = answer;
            receiver->HandleEvent(&event, rules, 1, &reply);
        }
        countingHost.answer = AnswerWith(1);
        for (const uint32_t mode : {1U, 3U, 4U, 5U}) {
            SetMode(mode);
            for (const int32_t code : {0, 1, DOT_QUERY_NETWORK_ERROR}) {
                countingHost.queryCode = code;
                receiver->HandleEvent(&event, rules, 1, &reply);
            }
        }
        countingHost.queryCode = 0;
        receiver->ClearAllowList();
        receiver->HandleEvent(&event, rules, 1, &reply);
        receiver->SetProperty(PROP_MID, nullptr, 0);
    }
};

TEST_F(LoggingOff, TakesNoTimeConvertsNothingAndReachesNoSink) {
    siblings.keepsConversions = true;
    const size_t timeReads = kit::TimeReads();
    DoEverything();
    EXPECT_EQ(kit::TimeReads(), timeReads);
    EXPECT_EQ(siblings.Conversions(), kit::Lines{});
    EXPECT_EQ(TakeRecords(), kit::Lines{});
}

TEST_F(LoggingOff, SavesWhatLoggingOnTakesForEachRecord) {
    siblings.keepsConversions = true;
    LogFileEnabled = true;
    const size_t timeReads = kit::TimeReads();
    DoEverything();
    const size_t records = TakeRecords().size();
    EXPECT_GT(records, 50U);
    EXPECT_EQ(kit::TimeReads() - timeReads, records);
    EXPECT_GE(siblings.Conversions().size(), 3 * records);
}

// Lifecycle.DestructionReleasesTheMachineIdServiceAfterTheFlagsAndBeforeTheAllowList checks the other members.
TEST_F(Allocations, DestructionFreesActionsAndTextsBeforeItReleasesTheMachineIdService) {
    const std::string longText(100, 'x');
    Fields().Actions() = {{"TYPE-1", true}};
    Fields().Mid() = longText;
    Fields().SpareText() = longText;
    constexpr long freed = 3; // the row of the action table and the two texts
    const long before = kit::NewBlocksHeld();
    long atRelease = 0;
    siblings.onMachineIdRelease = [&] { atRelease = kit::NewBlocksHeld(); };
    receiver.reset();
    siblings.onMachineIdRelease = nullptr;
    EXPECT_EQ(before - atRelease, freed);
}

} // namespace
