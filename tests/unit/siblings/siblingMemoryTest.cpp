// Memory that runs out within a sibling: a result, never an exception, and nothing is left behind. Each allocation of
// each operation fails in turn, until the operation passes.
#include <cstring>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"
#include "unit/siblings/offeredServices.h"
#include "unit/siblings/systemKit.h"
#include "unit/siblings/temporaryFolder.h"
#include "zelkBase/logWriter.h"
#include "zelkBase/machineIdService.h"

extern "C" uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out);

namespace siblings {

namespace {

using kit::NewBlocksHeld;

// Calls `operation`, which returns a result, with its first allocation failing, then its second, and so on until it no
// longer changes anything; `check` is told each result but the last, which is returned.
template <typename Operation, typename Check>
uint32_t FailInTurn(const Operation& operation, const Check& check) {
    for (size_t nth = 1; nth <= 100; ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        kit::FailingNew failing(nth);
        const uint32_t result = operation();
        failing.Stop();
        if (failing.Failed() == kit::AllocationKind::None) {
            return result;
        }
        check(result);
    }
    ADD_FAILURE() << "the operation never passed";
    return RESULT_FAILED;
}

class SiblingMemory : public testing::Test {
protected:
    // The first trace of a thread allocates what it keeps.
    void SetUp() override { SCOPED_TRACE("first"); }
};

TEST_F(SiblingMemory, OfTheFactoryIsAResultAndLeavesTheOutputAlone) {
    for (const auto& service : siblingTest::offered) {
        if (std::strcmp(service.library, "ZelkBase") != 0) {
            continue;
        }
        SCOPED_TRACE(service.name);
        int mark = 0;
        void* out = &mark;
        size_t failures = 0;
        const long held = NewBlocksHeld();
        const uint32_t result = FailInTurn([&] { return CreateZelkObject(&service.id, &out); },
                                           [&](uint32_t refused) {
                                               ++failures;
                                               EXPECT_EQ(refused, RESULT_OUT_OF_MEMORY);
                                               EXPECT_EQ(out, &mark);
                                               EXPECT_EQ(NewBlocksHeld(), held);
                                           });
        EXPECT_GT(failures, 0U);
        ASSERT_EQ(result, RESULT_OK);
        EXPECT_EQ(static_cast<ISmartUnknown*>(out)->Release(), 0);
        EXPECT_EQ(NewBlocksHeld(), held);
    }
}

WideString LongId() {
    return WideString(60, WideChar{'x'});
}

TEST_F(SiblingMemory, OfTheMachineIdLeavesTheRecordAlone) {
    auto* const service = new MachineIdService(SID_MachineId, LongId);
    MachineIdRecord record{};
    record.machineId[0] = 'm';
    const long held = NewBlocksHeld();
    size_t failures = 0;
    const uint32_t result = FailInTurn([&] { return static_cast<uint32_t>(service->GetMachineId(&record)); },
                                       [&](uint32_t refused) {
                                           ++failures;
                                           EXPECT_EQ(refused, RESULT_OUT_OF_MEMORY);
                                           EXPECT_EQ(WideString(record.machineId), WIDE("m"));
                                           EXPECT_EQ(NewBlocksHeld(), held);
                                       });
    EXPECT_GT(failures, 0U);
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

TEST_F(SiblingMemory, OfTheLogWriterLosesARecordOrTheStartAndNothingElse) {
    const siblingTest::TemporaryFolder folder;
    siblingTest::SetVariable("ZELK_LOG_DIR", folder.Text());
    auto* const writer = new LogWriter(SID_LogWriter, OpenPaper);
    siblingTest::SetVariable("ZELK_LOG_DIR", {});
    const long heldBefore = NewBlocksHeld();
    size_t failures = 0;
    const uint32_t started =
        FailInTurn([&] { return static_cast<uint32_t>(writer->Start(WIDE("module"), 0)); },
                   [&](uint32_t refused) {
                       ++failures;
                       EXPECT_EQ(refused, RESULT_OUT_OF_MEMORY);
                       EXPECT_EQ(paper.streams, 0);
                       EXPECT_EQ(static_cast<uint32_t>(writer->WriteRecord(WIDE("lost"), 30)), RESULT_NOT_STARTED);
                       EXPECT_EQ(NewBlocksHeld(), heldBefore);
                   });
    EXPECT_GT(failures, 0U);
    EXPECT_EQ(started, RESULT_OK);
    EXPECT_EQ(paper.size, 0U);

    constexpr size_t length = 10000; // the bytes of a short one need no heap
    const WideString record = WideString(length, WideChar{'r'}) + WIDE("\r\n");
    const std::string written = std::string(length, 'r') + "\r\n";
    const long held = NewBlocksHeld();
    failures = 0;
    std::string expected;
    const auto write = [&] { return static_cast<uint32_t>(writer->WriteRecord(record.c_str(), 30)); };
    const uint32_t result = FailInTurn(write, [&](uint32_t refused) {
        ++failures;
        EXPECT_EQ(refused, RESULT_OUT_OF_MEMORY);
        EXPECT_EQ(NewBlocksHeld(), held);
        EXPECT_EQ(std::string(paper.text, paper.size), expected);
        EXPECT_EQ(write(), RESULT_OK); // the lock is free
        expected += written;
    });
    EXPECT_GT(failures, 0U);
    EXPECT_EQ(result, RESULT_OK);
    EXPECT_EQ(std::string(paper.text, paper.size), expected + written);
    writer->Release();
    EXPECT_EQ(paper.streams, 0);
}

} // namespace

} // namespace siblings
