// Creation by the export, seen from within: linked into the test, so that its memory can be counted and can run out.
// Each case needs a separate process, in which the object does not exist yet.
#include <algorithm>
#include <atomic>
#include <new>
#include <thread>

#include "kit/heap/countedHeap.h"
#include "kit/host/receiverFixture.h"

extern "C" uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out);

namespace {

using kit::AllocationCounter;
using kit::FailingNew;

int32_t ReferenceCount(void* interface) {
    return MordRevFields(static_cast<CMordRecv&>(*static_cast<IMordRev*>(interface))).ReferenceCount();
}

TEST(Creation, RefusedIdentifierCreatesNoObject) {
    void* out = nullptr;
    AllocationCounter counter;
    const uint32_t second = CreateZelkObject(&IID_IMordRevSecond, &out);
    const uint32_t unknown = CreateZelkObject(&SID_ModuleFinder, &out);
    const std::vector<size_t> sizes = counter.Sizes();
    EXPECT_EQ(sizes, std::vector<size_t>());
    EXPECT_EQ(second, RESULT_NO_INTERFACE);
    EXPECT_EQ(unknown, RESULT_NO_INTERFACE);
    EXPECT_EQ(out, nullptr);
}

TEST(Creation, FirstCallAllocatesTheObjectAndLaterOnesNothing) {
    void* out = nullptr;
    {
        AllocationCounter counter;
        CreateZelkObject(&IID_IMordRev, &out);
        const std::vector<size_t> sizes = counter.Sizes();
        EXPECT_EQ(sizes, std::vector<size_t>{sizeof(CMordRecv)});
    }
    AllocationCounter counter;
    CreateZelkObject(&IID_IMordRev, &out);
    const std::vector<size_t> sizes = counter.Sizes();
    EXPECT_EQ(sizes, std::vector<size_t>());
}

TEST(Creation, EveryCallRaisesTheReferenceCountByOne) {
    void* out = nullptr;
    for (int32_t call = 1; call <= 5; ++call) {
        EXPECT_EQ(CreateZelkObject(&IID_IMordRev, &out), RESULT_OK);
        EXPECT_EQ(ReferenceCount(out), call);
    }
    CreateZelkObject(&IID_IMordRevSecond, &out);
    EXPECT_EQ(ReferenceCount(out), 5) << "a refused call raises nothing";
}

TEST(Creation, ExhaustedMemoryIsThrownToTheCallerAndALaterCallSucceeds) {
    void* out = nullptr;
    for (int attempt = 0; attempt < 3; ++attempt) {
        {
            const FailingNew failing(1);
            EXPECT_THROW(CreateZelkObject(&IID_IMordRev, &out), std::bad_alloc);
        }
        EXPECT_EQ(out, nullptr);
    }
    EXPECT_EQ(CreateZelkObject(&IID_IMordRev, &out), RESULT_OK);
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(ReferenceCount(out), 1) << "the failed calls raised nothing";
    EXPECT_TRUE(static_cast<IMordRev*>(out)->Start());
}

// While the first caller is held within the allocation, the others wait; when it fails, one of them makes the object.
TEST(Creation, ConcurrentCallersWaitAndOneOfThemTriesAgainWhenTheFirstFails) {
    constexpr int callers = 8;
    std::atomic<int> ready{0};
    std::atomic<int> thrown{0};
    std::vector<void*> out(callers);
    std::vector<std::thread> threads;
    for (int i = 0; i < callers; ++i) {
        threads.emplace_back([&, i] {
            ++ready;
            while (ready <= callers) {
                std::this_thread::yield();
            }
            try {
                CreateZelkObject(&IID_IMordRev, &out[static_cast<size_t>(i)]);
            } catch (const std::bad_alloc&) {
                ++thrown;
            }
        });
    }
    while (ready < callers) {
        std::this_thread::yield();
    }
    kit::FailNextOf(sizeof(CMordRecv), 50);
    ++ready; // now all go
    for (auto& thread : threads) {
        thread.join();
    }
    void* object = nullptr;
    CreateZelkObject(&IID_IMordRev, &object);
    EXPECT_EQ(thrown, 1);
    EXPECT_EQ(std::count(out.begin(), out.end(), nullptr), 1);
    EXPECT_EQ(std::count(out.begin(), out.end(), object), callers - 1);
    EXPECT_EQ(ReferenceCount(object), callers) << "seven callers and the last one";
}

} // namespace
