// 32-bit Windows: each operation takes its own arguments from the stack, gives the registers back that belong to its
// caller, and asks for no more than the stack alignment that the system promises, which is four bytes.
#include <vector>

#include <gtest/gtest.h>

#include "abi/edge.h"
#include "abi/fakeHost.h"
#include "abi/measuredCall.h"

namespace {

using namespace edge;

constexpr uint32_t directionFlag = 0x400;

template <typename Pointer>
uint32_t Word(Pointer* pointer) {
    return reinterpret_cast<uint32_t>(pointer);
}

class AbiStack : public ::testing::TestWithParam<uint32_t> {
protected:
    void SetUp() override { LoadSiblings(); }

    // Calls a function with the receiver in ECX and gives EAX; the callee must remove `removed` bytes.
    uint32_t Call(const void* function, const std::vector<uint32_t>& arguments, size_t removed) {
        MeasuredCall call{};
        call.function = function;
        call.object = receiver;
        call.arguments = arguments.data();
        call.count = static_cast<uint32_t>(arguments.size());
        call.offset = GetParam();
        MakeMeasuredCall(&call);
        EXPECT_EQ(call.removed, static_cast<int32_t>(removed));
        EXPECT_EQ(call.changed, 0U);
        EXPECT_EQ(call.flags & directionFlag, 0U);
        return call.result;
    }

    // The operation in `slot`; an operation removes all of its arguments.
    uint32_t CallSlot(int slot, const std::vector<uint32_t>& arguments) {
        SCOPED_TRACE(slot);
        const void* const* const table = reinterpret_cast<const void* const*>(receiver->slots);
        return Call(table[slot], arguments, 4 * arguments.size());
    }

    bool CallPredicate(int slot, const std::vector<uint32_t>& arguments) {
        return (CallSlot(slot, arguments) & 0xFF) != 0; // a bool has eight bits
    }

    Receiver* const receiver = TheReceiver();
};

TEST_P(AbiStack, EveryOperationRemovesItsArguments) {
    const NamedValue valuesOfTheEvent[] = {{"pid", nullptr, 4}, {"net_drv", nullptr, 1}};
    const NamedValue ruleValues[] = {{"guid", "GUID", 0}, {"type", "TYPE", 0}};
    FakeRecord event = MakeRecord("event", valuesOfTheEvent, 2);
    FakeRecord rule = MakeRecord("rule", ruleValues, 2);
    Record* rules[] = {&rule.record};
    FakeHost host = MakeHost(R"({"GUID": {"value": 1, "mid": {"MID": 0}}})");
    FakeSink sink = MakeSink();
    uint32_t mode = 77;
    uint32_t reply = 77;
    void* out = nullptr;

    EXPECT_EQ(CallSlot(0, {}), 2U);
    EXPECT_EQ(CallSlot(1, {}), 1U);
    EXPECT_EQ(CallSlot(2, {Word(&secondReceiverId), Word(&out)}), 0U);
    EXPECT_EQ(out, receiver);
    EXPECT_TRUE(CallPredicate(3, {Word(&host.host)}));
    EXPECT_TRUE(CallPredicate(5, {1, 2, 3}));
    EXPECT_TRUE(CallPredicate(6, {8, Word(&mode), 4}));
    EXPECT_TRUE(CallPredicate(8, {}));
    EXPECT_TRUE(CallPredicate(13, {Word(&sink.sink)}));
    EXPECT_TRUE(CallPredicate(11, {Word(R"({"mid_list": [{"mid": "MID", "protocol": ["TYPE"]}]})")}));
    EXPECT_TRUE(CallPredicate(10, {Word(&event.record), Word(rules), 1, Word(&reply)}));
    EXPECT_EQ(reply, 1U);
    EXPECT_TRUE(CallPredicate(12, {}));
    EXPECT_FALSE(CallPredicate(10, {Word(&event.record), Word(rules), 1, Word(&reply)}));
    EXPECT_EQ(reply, 0U);
    EXPECT_FALSE(CallPredicate(9, {}));
    EXPECT_TRUE(CallPredicate(4, {}));
    EXPECT_EQ(CallSlot(7, {1}), Word(receiver)); // the last: it destroys the object
}

TEST_P(AbiStack, TheExportLeavesItsArgumentsToItsCaller) {
    void* out = nullptr;
    EXPECT_EQ(Call(reinterpret_cast<const void*>(LibraryFactory()), {Word(&receiverId), Word(&out)}, 0), 0U);
    EXPECT_EQ(out, receiver);
}

INSTANTIATE_TEST_SUITE_P(AtEachAlignment, AbiStack, ::testing::Values(0U, 4U, 8U, 12U));

} // namespace
