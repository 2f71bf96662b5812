// The slot of the destructor. Each case is the last thing that its process does with the receiver.
#include <gtest/gtest.h>

#include "abi/edge.h"
#include "abi/fakeHost.h"
#include "abi/heapUse.h"

namespace {

using namespace edge;

// The object takes more than this; what it may hold apart from its tables, such as a lock of the system, takes less.
constexpr size_t leastObjectSize = 100;

class AbiDestructor : public ::testing::Test {
protected:
    void SetUp() override {
        LoadSiblings();
        ASSERT_TRUE(receiver->slots->Init(receiver, &host.host));
        Journal();
    }

    Receiver* const receiver = TheReceiver();
    FakeHost host = MakeHost(nullptr);
};

TEST_F(AbiDestructor, WithTheDeleteFlagReleasesTheMachineIdServiceAndFreesTheObject) {
    void* const address = receiver;
    const size_t before = HeapBytesInUse();
    void* const destroyed = receiver->slots->Destructor(receiver, 1);
    EXPECT_LE(HeapBytesInUse() + leastObjectSize, before);
    EXPECT_EQ(destroyed, address);
    EXPECT_EQ(Journal(), "IMachineIdService.Release\n");
}

TEST_F(AbiDestructor, WithoutTheDeleteFlagLeavesTheMemoryToItsOwner) {
    const size_t before = HeapBytesInUse();
    void* const destroyed = receiver->slots->Destructor(receiver, 2); // only bit 0 counts
    EXPECT_GT(HeapBytesInUse() + leastObjectSize, before) << "there is no table to be freed, and the object stays";
    EXPECT_EQ(destroyed, receiver);
    EXPECT_EQ(Journal(), "IMachineIdService.Release\n");
}

} // namespace
