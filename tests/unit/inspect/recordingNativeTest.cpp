// The access layer that records: what it passes on, and what it keeps.
#include "inspectionFixture.h"
#include "native/chooseNative.h"
#include "recordedTarget.h"

namespace {

using namespace scripted;
using mordinspect::AccessRecord;
using mordinspect::Limits;
using mordinspect::RecordedTarget;
using mordinspect::RecordingNative;
using mordinspect::Step;

class RecordingLayer : public InspectionFixture {
protected:
    void SetUp() override {
        InspectionFixture::SetUp();
        layer = ChooseNative(handle);
        thread = OpenThreadHandle(9);
        system.threads[0].teb32 = 0x350000;
        system.threads[0].teb64 = 0x350000;
        target->memory.Map(0x350000, 0x4000);
    }

    // The calls that `use` makes on the layer, and what it returns and delivers as one text.
    template <typename Use>
    std::string Trace(Native& native, const Use& use) {
        std::string trace;
        OnLowStack([&] {
            alignas(8) char buffer[8192] = {};
            system.TakeCalls();
            trace = std::to_string(use(native, buffer)) + '\n';
            for (const std::string& call : system.TakeCalls()) {
                trace += call + '\n';
            }
            for (const char byte : buffer) {
                trace += byte == 0 ? std::string() : std::to_string(byte) + ' ';
            }
        });
        return trace;
    }

    std::unique_ptr<Native> layer;
    platform::Handle thread = nullptr;
};

TEST_P(RecordingLayer, MakesTheCallsOfTheLayerBehindIt) {
    RecordingNative recorder(handle, *layer, {});
    using Use = std::function<int64_t(Native&, char*)>;
    const auto both = [&](const char* name, const Use& use) {
        Trace(*layer, use); // finds functions that are looked for once
        EXPECT_EQ(Trace(recorder, use), Trace(*layer, use)) << name;
    };
    both("ReadMemory", [&](Native& native, char* buffer) {
        uint64_t count = 0;
        return int64_t{native.ReadMemory(PebAddress(), buffer, 16, &count)} + static_cast<int64_t>(count);
    });
    both("QueryProcessInformation", [](Native& native, char* buffer) {
        uint32_t length = 0;
        return int64_t{native.QueryProcessInformation(0, buffer, native.IsX86System() ? 24 : 48, &length)} + length;
    });
    both("QueryThreadInformation",
         [&](Native& native, char* buffer) { return native.QueryThreadInformation(thread, 9, buffer, 8); });
    both("QueryVirtualMemory", [&](Native& native, char* buffer) {
        return native.QueryVirtualMemory(base, 0, buffer, native.IsX86System() ? 28 : 48);
    });
    both("QuerySystemInformation", [&](Native& native, char* buffer) {
        uint32_t length = 0;
        return int64_t{native.QuerySystemInformation(57, buffer, 4096, &length)} + length;
    });
    both("GetThreadContext32", [&](Native& native, char* buffer) { return native.GetThreadContext32(thread, buffer); });
    both("GetThreadContext64", [&](Native& native, char* buffer) { return native.GetThreadContext64(thread, buffer); });
    both("ReadTeb32",
         [&](Native& native, char* buffer) { return static_cast<int64_t>(native.ReadTeb32(thread, buffer)); });
    both("ReadTeb64",
         [&](Native& native, char* buffer) { return static_cast<int64_t>(native.ReadTeb64(thread, buffer)); });
    EXPECT_EQ(recorder.TargetIsWow64(), layer->TargetIsWow64());
    EXPECT_EQ(recorder.IsX86System(), layer->IsX86System());
}

// But for the last-status value, which it clears before.
TEST_P(RecordingLayer, ReadsBlocksByTheCallsOfTheLayerBehindIt) {
    RecordingNative recorder(handle, *layer, {});
    const auto read32 = [](Native& native, char* buffer) { return static_cast<int64_t>(native.ReadPeb32(buffer)); };
    const auto read64 = [](Native& native, char* buffer) { return static_cast<int64_t>(native.ReadPeb64(buffer)); };
    const auto bothAlike = [&](const char* when) {
        for (const auto& read : {std::function<int64_t(Native&, char*)>(read32), {read64}}) {
            std::string recorded = Trace(recorder, read);
            const std::string cleared = "\nSetLastStatusValue(0x0)\n";
            const size_t at = recorded.find(cleared);
            ASSERT_NE(at, std::string::npos);
            recorded.replace(at, cleared.size(), "\n");
            EXPECT_EQ(recorded, Trace(*layer, read)) << when;
        }
    };
    const NativeFunctionTable table = GetNativeFunctionTable();
    bothAlike("blocks that can be read");
    system.byAddress = {{PebAddress(), {partialCopy, true}}};
    bothAlike("a block of which a part can be read");
    system.byAddress = {{PebAddress(), {accessViolation}}};
    bothAlike("a block that cannot be read");
    target->peb32 = 0;
    target->peb64 = 0;
    bothAlike("no address");
    EXPECT_EQ(GetNativeFunctionTable(), table) << "the functions stand where they stood";
    GetNativeFunctionTable().erase("NtQueryInformationProcess");
    GetNativeFunctionTable().erase("NtWow64QueryInformationProcess64");
    GetNativeFunctionTable().erase("NtWow64ReadVirtualMemory64");
    const NativeFunctionTable less = GetNativeFunctionTable();
    bothAlike("no functions");
    EXPECT_EQ(GetNativeFunctionTable(), less);
}

TEST_P(RecordingLayer, KeepsTheLastRequestAndTheFirstThatFailed) {
    RecordingNative recorder(handle, *layer, {});
    char buffer[16];
    EXPECT_FALSE(recorder.Record().last);
    EXPECT_EQ(recorder.ReadMemory(0x10, buffer, 8, nullptr), StatusFromWord(accessViolation));
    system.byAddress = {{PebAddress(), {partialCopy}}};
    recorder.ReadMemory(PebAddress(), buffer, 8, nullptr);
    recorder.ReadMemory(ldrAddress, buffer, 8, nullptr);
    ASSERT_TRUE(recorder.Record().last && recorder.Record().firstFailed);
    EXPECT_EQ(recorder.Record().last->step, Step::memory);
    EXPECT_EQ(recorder.Record().last->number, 3U);
    EXPECT_EQ(recorder.Record().last->status, STATUS_OF_SUCCESS);
    EXPECT_EQ(recorder.Record().firstFailed->number, 1U);
    EXPECT_EQ(recorder.Record().firstFailed->status, StatusFromWord(accessViolation));
    recorder.Begin();
    EXPECT_FALSE(recorder.Record().last || recorder.Record().firstFailed);
}

TEST_P(RecordingLayer, RefusesWhatIsBeyondALimitUntilItBeginsAnew) {
    RecordingNative recorder(handle, *layer, Limits{.reads = 2, .bytes = 100});
    char buffer[100];
    EXPECT_EQ(recorder.ReadMemory(ldrAddress, buffer, 40, nullptr), STATUS_OF_SUCCESS);
    EXPECT_EQ(recorder.ReadMemory(ldrAddress, buffer, 61, nullptr), STATUS_OF_REFUSED_REQUEST);
    EXPECT_EQ(recorder.Record().limit, "100 bytes");
    system.TakeCalls();
    EXPECT_EQ(recorder.ReadMemory(ldrAddress, buffer, 1, nullptr), STATUS_OF_REFUSED_REQUEST);
    EXPECT_EQ(recorder.ReadPeb64(buffer), 0U);
    EXPECT_TRUE(system.TakeCalls().empty());
    EXPECT_EQ(recorder.Record().last->number, 2U) << "the one that was refused first";
    recorder.Begin();
    EXPECT_EQ(recorder.ReadMemory(ldrAddress, buffer, 40, nullptr), STATUS_OF_SUCCESS);
    recorder.Forget();
    EXPECT_EQ(recorder.ReadMemory(ldrAddress, buffer, 40, nullptr), STATUS_OF_SUCCESS);
    EXPECT_FALSE(recorder.Admits(0));
    EXPECT_EQ(recorder.Record().limit, "2 reads");
    recorder.Begin();
    EXPECT_EQ(recorder.ReadMemory(ldrAddress, buffer, UINT64_MAX, nullptr), STATUS_OF_REFUSED_REQUEST);
}

TEST_P(RecordingLayer, ShowsReadsOfMemoryWithTheirContent) {
    RecordingNative recorder(handle, *layer, Limits{.reads = 2});
    std::vector<std::string> shown;
    recorder.Begin([&](const mordinspect::Request& read, const void* content) {
        shown.push_back(std::to_string(read.number) + " " + std::to_string(read.status) + " " +
                        std::string(static_cast<const char*>(content), 2));
    });
    char buffer[3] = "..";
    target->memory.Write(0x350000, "ab", 2);
    recorder.ReadMemory(0x350000, buffer, 2, nullptr);
    recorder.ReadMemory(0x10, buffer, 2, nullptr);
    recorder.ReadMemory(0x350000, buffer, 2, nullptr);
    EXPECT_EQ(shown,
              (std::vector<std::string>{"1 0 ab", "2 " + std::to_string(StatusFromWord(accessViolation)) + " ab"}));
}

TEST_P(RecordingLayer, LeavesATargetWithTheLayerThatItChose) {
    system.TakeCalls();
    {
        RecordedTarget recorded(handle, {});
        EXPECT_EQ(&recorded->Access(), &recorded.Access());
        EXPECT_EQ(recorded->GetParentProcessId(), 5U);
        EXPECT_EQ(recorded.Access().Record().last->step, Step::processInformation);
    }
    EXPECT_EQ(system.handles.size(), 2U) << "process and thread of this test";
}

INSTANTIATE_TEST_SUITE_P(, RecordingLayer, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

} // namespace
