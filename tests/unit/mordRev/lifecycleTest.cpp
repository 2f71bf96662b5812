// The receiver's fields: their types, defaults, and the operations that only set or read them; destruction.
#include <type_traits>

#include "kit/host/lowWord.h"
#include "kit/host/receiverFixture.h"

namespace {

using Texts = std::vector<std::string>;

// Values on the wire between host and object.
static_assert(PROP_MID == 6 && PROP_DEFENDER_MODE == 8 && PROP_EXCEPTION_MODE == 9 && PROP_ACTION_JSON == 20);
static_assert(MODE_ALL_FORBID == 1 && MODE_ACTION_TABLE == 3 && MODE_ALLOW_AFTER_DECISION == 4 && MODE_EMERGENCY == 5);
static_assert(EXCEPTION_ALLOW == 1 && EXCEPTION_BLOCK == 2);
static_assert(REPLY_BLOCK == 0 && REPLY_ALLOW == 1 && REPLY_ALLOW_FLAGGED == 2);
static_assert(EVENT_FLAG_DISCONNECT == 0x04 && EVENT_FLAG_REPLY_TWO == 0x10);
static_assert(DOT_QUERY_ANSWERED == 0 && DOT_QUERY_NETWORK_ERROR == 1007);
static_assert(RECORD_DELIVERED == 0 && RECORD_BUFFER_NEEDED == 201);

// The types of the fields.
template <auto accessor, typename Field>
constexpr bool fieldIs = std::is_same_v<decltype((std::declval<MordRevFields>().*accessor)()), Field&>;
static_assert(fieldIs<&MordRevFields::AllowedMids, const std::map<std::string, std::set<std::string>>>);
static_assert(fieldIs<&MordRevFields::Actions, std::map<std::string, bool>>);
static_assert(fieldIs<&MordRevFields::Lock, std::timed_mutex>);
static_assert(fieldIs<&MordRevFields::Mode, std::atomic<uint32_t>> &&
              fieldIs<&MordRevFields::ExceptionMode, std::atomic<uint32_t>>);

using Lifecycle = kit::ReceiverFixture;

TEST_F(Lifecycle, FreshObjectHasItsDefaults) {
    const MordRevFields fields = Fields();
    EXPECT_FALSE(fields.Inited());
    EXPECT_EQ(fields.Host(), nullptr);
    EXPECT_FALSE(fields.Started());
    EXPECT_EQ(fields.AllowedMids(), AllowTable());
    EXPECT_EQ(fields.ReportSink(), nullptr);
    EXPECT_FALSE(fields.HasMidService());
    EXPECT_EQ(fields.Mid(), "");
    EXPECT_EQ(fields.Mode(), 3U);
    EXPECT_EQ(fields.ExceptionMode(), 2U);
    EXPECT_EQ(fields.Actions(), ActionTable());
    EXPECT_EQ(fields.SpareText(), "");
    EXPECT_EQ(fields.ReferenceCount(), 0);
    ASSERT_TRUE(fields.Lock().try_lock());
    fields.Lock().unlock();
}

TEST_F(Lifecycle, ConstructionCallsNothingAndLogsNothing) {
    StartLogging();
    const CMordRecv other;
    EXPECT_EQ(siblings.calls.Take(), Texts());
    EXPECT_EQ(TakeRecords(), Texts());
}

TEST_F(Lifecycle, StartReturnsTrueEachTime) {
    EXPECT_TRUE(receiver->Start());
    EXPECT_TRUE(Fields().Started());
    EXPECT_TRUE(receiver->Start());
    EXPECT_TRUE(Fields().Started());
}

TEST_F(Lifecycle, StopReturnsFalseBeforeAndAfterStart) {
    EXPECT_FALSE(receiver->Stop());
    EXPECT_FALSE(Fields().Started());
    receiver->Start();
    EXPECT_FALSE(receiver->Stop());
    EXPECT_FALSE(Fields().Started());
    EXPECT_FALSE(receiver->Stop());
}

TEST_F(Lifecycle, StartAndStopLogNothingAndCallNothing) {
    MakeReady();
    receiver->Start();
    receiver->Stop();
    EXPECT_EQ(TakeRecords(), Texts());
    EXPECT_EQ(siblings.calls.Take(), Texts());
    EXPECT_EQ(calls.Take(), Texts());
}

TEST_F(Lifecycle, GetPropertyReturnsTrueAndWritesNothingToItsArguments) {
    const kit::LowWord word;
    word.Value() = 0x12345678;
    for (const uint32_t key : {0U, 6U, 8U, 9U, 20U, 77U, 0xFFFFFFFFU}) {
        EXPECT_TRUE(receiver->GetProperty(key, word.Address(), sizeof word.Value())) << key;
        EXPECT_TRUE(receiver->GetProperty(key, 0, 0)) << key;
        EXPECT_EQ(word.Value(), 0x12345678U) << key;
    }
}

TEST_F(Lifecycle, GetPropertyReturnsNoModeAndLogsNothing) {
    MakeReady();
    SetMode(MODE_EMERGENCY);
    const kit::LowWord word;
    word.Value() = 0x12345678;
    EXPECT_TRUE(receiver->GetProperty(PROP_DEFENDER_MODE, word.Address(), sizeof word.Value()));
    EXPECT_EQ(word.Value(), 0x12345678U);
    EXPECT_EQ(Fields().Mode(), MODE_EMERGENCY);
    EXPECT_EQ(TakeRecords(), Texts());
}

TEST_F(Lifecycle, SetReportSinkReturnsTrueAndStoresAnyPointer) {
    EXPECT_TRUE(receiver->SetReportSink(&sink));
    EXPECT_EQ(Fields().ReportSink(), &sink);
    kit::RecordingSink other(calls);
    EXPECT_TRUE(receiver->SetReportSink(&other));
    EXPECT_EQ(Fields().ReportSink(), &other);
    EXPECT_TRUE(receiver->SetReportSink(nullptr));
    EXPECT_EQ(Fields().ReportSink(), nullptr);
    EXPECT_TRUE(receiver->SetReportSink(nullptr));
    EXPECT_EQ(calls.Take(), Texts()) << "no sink is called";
}

TEST_F(Lifecycle, UninitReturnsTrueAndClearsOnlyItsFlag) {
    MakeRunning();
    ASSERT_TRUE(receiver->SetAllowList(R"({"mid_list":[{"mid":"A","protocol":["tcp"]}]})"));
    std::string action = R"({"tcp":1})";
    ASSERT_TRUE(receiver->SetProperty(PROP_ACTION_JSON, action.data(), 1));
    SetMode(MODE_EMERGENCY);
    SetExceptionMode(EXCEPTION_ALLOW);
    TakeRecords();
    siblings.calls.Take();

    EXPECT_TRUE(receiver->Uninit());
    EXPECT_FALSE(Fields().Inited());
    EXPECT_EQ(Fields().Host(), &host);
    EXPECT_TRUE(Fields().Started());
    EXPECT_EQ(Fields().AllowedMids(), (AllowTable{{"tcp", {"A"}}}));
    EXPECT_EQ(Fields().ReportSink(), &sink);
    EXPECT_TRUE(Fields().HasMidService());
    EXPECT_EQ(Fields().Mid(), "SCRIPTED-MACHINE");
    EXPECT_EQ(Fields().Mode(), MODE_EMERGENCY);
    EXPECT_EQ(Fields().ExceptionMode(), EXCEPTION_ALLOW);
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"tcp", true}}));
    EXPECT_EQ(TakeRecords(), Texts());
    EXPECT_EQ(siblings.calls.Take(), Texts());
    EXPECT_EQ(calls.Take(), Texts());
}

// Allocations.DestructionFreesActionsAndTextsBeforeItReleasesTheMachineIdService checks the members between.
TEST_F(Lifecycle, DestructionReleasesTheMachineIdServiceAfterTheFlagsAndBeforeTheAllowList) {
    MakeRunning();
    const AllowTable list{{"tcp", {"A"}}};
    Fields().SetAllowedMids(list);
    bool released = false;
    siblings.onMachineIdRelease = [&, fields = Fields()] {
        released = true;
        EXPECT_FALSE(fields.Started());
        EXPECT_FALSE(fields.Inited());
        EXPECT_EQ(fields.Host(), nullptr);
        EXPECT_EQ(fields.AllowedMids(), list);
        EXPECT_EQ(fields.ReportSink(), &sink);
    };
    receiver.reset();
    siblings.onMachineIdRelease = nullptr;
    EXPECT_TRUE(released);
}

TEST_F(Lifecycle, UninitReturnsTrueBeforeInitAndTwice) {
    EXPECT_TRUE(receiver->Uninit());
    EXPECT_TRUE(receiver->Uninit());
    MakeReady();
    EXPECT_TRUE(receiver->Uninit());
    EXPECT_TRUE(receiver->Uninit());
    EXPECT_FALSE(Fields().Inited());
}

} // namespace
