// The export: which identifiers it takes, and that the process has one object.
#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "abi/edge.h"
#include "abi/heapUse.h"

namespace {

using namespace edge;

void* const untouched = reinterpret_cast<void*>(uintptr_t{0x5A5A5A5A});

TEST(AbiExport, TwoCallsGiveTheSamePointer) {
    const Factory create = LibraryFactory();
    void* first = nullptr;
    void* second = nullptr;
    EXPECT_EQ(create(&receiverId, &first), ok);
    EXPECT_EQ(create(&receiverId, &second), ok);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(first, second);
}

TEST(AbiExport, RefusesTheSecondIdentifierAndMakesNoObject) {
    const Factory create = LibraryFactory();
    void* out = untouched;
    const size_t before = HeapBytesInUse();
    const uint32_t refused = create(&secondReceiverId, &out);
    const size_t afterRefusal = HeapBytesInUse();
    EXPECT_EQ(refused, noInterface);
    EXPECT_EQ(out, untouched);
    EXPECT_EQ(afterRefusal, before);

    EXPECT_EQ(create(&receiverId, &out), ok);
    EXPECT_GE(HeapBytesInUse(), before + 100) << "the object that the right identifier makes is seen in the heap";
}

TEST(AbiExport, RefusesAnIdentifierThatDiffersInOneBit) {
    const Factory create = LibraryFactory();
    for (size_t bit = 0; bit < 8 * sizeof(Guid); ++bit) {
        unsigned char bytes[sizeof(Guid)];
        std::memcpy(bytes, &receiverId, sizeof bytes);
        bytes[bit / 8] = static_cast<unsigned char>(bytes[bit / 8] ^ (1U << bit % 8));
        Guid other;
        std::memcpy(&other, bytes, sizeof other);
        void* out = untouched;
        EXPECT_EQ(create(&other, &out), noInterface) << "bit " << bit;
        EXPECT_EQ(out, untouched) << "bit " << bit;
    }
}

TEST(AbiExport, TakesAnIdentifierThatIsNotAligned) {
    alignas(Guid) unsigned char bytes[sizeof(Guid) + 1];
    std::memcpy(bytes + 1, &receiverId, sizeof(Guid));
    void* out = nullptr;
    EXPECT_EQ(LibraryFactory()(reinterpret_cast<const Guid*>(bytes + 1), &out), ok);
    EXPECT_EQ(out, TheReceiver());
}

TEST(AbiExport, EightFirstCallersAtOnceGetOnePointer) {
    constexpr int callers = 8;
    const Factory create = LibraryFactory();
    std::atomic<int> waiting{0};
    std::vector<void*> pointers(callers, nullptr);
    std::vector<uint32_t> results(callers, 1);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < callers; ++i) {
        threads.emplace_back([&, i] {
            ++waiting;
            while (waiting != callers) {
            }
            results[i] = create(&receiverId, &pointers[i]);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, std::vector<uint32_t>(callers, ok));
    EXPECT_NE(pointers[0], nullptr);
    EXPECT_EQ(pointers, std::vector<void*>(callers, TheReceiver()));
}

TEST(AbiExport, MakesNoUseOfTheSiblings) {
    LoadSiblings();
    EXPECT_NE(TheReceiver(), nullptr);
    EXPECT_EQ(Journal(), "");
}

} // namespace
