// Failed allocations in a sibling: the call returns an error, throws nothing and leaks nothing. Each allocation of each
// operation fails in turn.
#include <cstring>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"
#include "unit/siblings/logFolder.h"
#include "unit/siblings/offeredServices.h"
#include "zelkBase/logWriter.h"
#include "zelkBase/machineIdService.h"

extern "C" uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out);

namespace siblings {

namespace {

using kit::NewBlocksHeld;

// Calls `operation` with its first allocation failing, then with its second, and so on until no allocation fails.
// Requires an out-of-memory error for each failure, calls `check` after it, and returns the last result.
template <typename Operation, typename Check>
uint32_t FailInTurn(const Operation& operation, const Check& check) {
    for (size_t nth = 1; nth <= 100; ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        kit::FailingNew failing(nth);
        const uint32_t result = operation();
        failing.Stop();
        if (failing.Failed() == kit::AllocationKind::None) {
            EXPECT_GT(nth, 1U) << "the operation allocates nothing";
            return result;
        }
        EXPECT_EQ(result, RESULT_OUT_OF_MEMORY);
        check();
    }
    ADD_FAILURE() << "the operation never succeeded";
    return RESULT_FAILED;
}

class SiblingMemory : public testing::Test {
protected:
    // The first trace of a thread allocates memory that it keeps.
    void SetUp() override { SCOPED_TRACE("first"); }
};

TEST_F(SiblingMemory, FactoryFailsAndLeavesTheOutput) {
    for (const auto& service : siblingTest::offered) {
        if (std::strcmp(service.library, "ZelkBase") != 0) {
            continue;
        }
        SCOPED_TRACE(service.name);
        int mark = 0;
        void* out = &mark;
        const long held = NewBlocksHeld();
        const uint32_t result = FailInTurn([&] { return CreateZelkObject(&service.id, &out); },
                                           [&] {
                                               EXPECT_EQ(out, &mark);
                                               EXPECT_EQ(NewBlocksHeld(), held);
                                           });
        ASSERT_EQ(result, RESULT_OK);
        EXPECT_EQ(static_cast<ISmartUnknown*>(out)->Release(), 0);
        EXPECT_EQ(NewBlocksHeld(), held);
    }
}

WideString LongId() {
    return WideString(60, WideChar{'x'});
}

TEST_F(SiblingMemory, MachineIdFailsAndLeavesTheRecord) {
    auto* const service = new MachineIdService(SID_MachineId, LongId);
    MachineIdRecord record{};
    record.machineId[0] = 'm';
    const long held = NewBlocksHeld();
    const uint32_t result = FailInTurn([&] { return static_cast<uint32_t>(service->GetMachineId(&record)); },
                                       [&] {
                                           EXPECT_EQ(WideString(record.machineId), WIDE("m"));
                                           EXPECT_EQ(NewBlocksHeld(), held);
                                       });
    EXPECT_EQ(result, RESULT_OK);
    EXPECT_EQ(WideString(record.machineId), LongId());
    EXPECT_EQ(NewBlocksHeld(), held);
    service->Release();
}

struct Paper {
    char text[65536] = {};
    size_t size = 0;
    int streams = 0;
};
Paper paper;

// Allocates nothing itself.
class PaperStream final : public AppendStream {
public:
    PaperStream() { ++paper.streams; }
    ~PaperStream() override { --paper.streams; }

    size_t Append(std::string_view bytes) override {
        paper.size += bytes.copy(paper.text + paper.size, sizeof paper.text - paper.size);
        return bytes.size();
    }
};

std::unique_ptr<AppendStream> OpenPaper(const WideString&) {
    return std::make_unique<PaperStream>();
}

TEST_F(SiblingMemory, LogWriterLosesOnlyTheStartOrTheRecord) {
    const siblingTest::TestFolder folder;
    siblingTest::SetVariable("ZELK_LOG_DIR", folder.Text());
    auto* const writer = new LogWriter(SID_LogWriter, OpenPaper);
    siblingTest::SetVariable("ZELK_LOG_DIR", {});
    const long heldBefore = NewBlocksHeld();
    const uint32_t started =
        FailInTurn([&] { return static_cast<uint32_t>(writer->Start(WIDE("module"), 0)); },
                   [&] {
                       EXPECT_EQ(paper.streams, 0);
                       EXPECT_EQ(static_cast<uint32_t>(writer->WriteRecord(WIDE("lost"), 30)), RESULT_NOT_STARTED);
                       EXPECT_EQ(NewBlocksHeld(), heldBefore);
                   });
    EXPECT_EQ(started, RESULT_OK);
    EXPECT_EQ(paper.size, 0U);

    constexpr size_t length = 10000; // the bytes of a short one need no heap
    const WideString record = WideString(length, WideChar{'r'}) + WIDE("\r\n");
    const std::string written = std::string(length, 'r') + "\r\n";
    const long held = NewBlocksHeld();
    std::string expected;
    const auto write = [&] { return static_cast<uint32_t>(writer->WriteRecord(record.c_str(), 30)); };
    const uint32_t result = FailInTurn(write, [&] {
        EXPECT_EQ(NewBlocksHeld(), held);
        EXPECT_EQ(std::string(paper.text, paper.size), expected);
        EXPECT_EQ(write(), RESULT_OK); // the lock is free
        expected += written;
    });
    EXPECT_EQ(result, RESULT_OK);
    EXPECT_EQ(std::string(paper.text, paper.size), expected + written);
    writer->Release();
    EXPECT_EQ(paper.streams, 0);
}

} // namespace

} // namespace siblings
