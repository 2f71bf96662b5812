// The machine id service over ids that this machine does not have.
#include <new>

#include <gtest/gtest.h>

#include "zelkBase/machineIdService.h"

namespace siblings {

namespace {

// Asks a service over `source`; the record holds "before" until it is filled.
int32_t Ask(MachineIdService::Source source, MachineIdRecord& record) {
    record = {WIDE("before")};
    auto* const service = new MachineIdService(SID_MachineId, source);
    const int32_t result = service->GetMachineId(&record);
    service->Release();
    return result;
}

TEST(MachineIdServiceTest, passesAnIdOnAsItStands) {
    MachineIdRecord record;
    ASSERT_EQ(Ask([] { return WideString(WIDE("Ger\u00E4t \U0001F600")); }, record), 0);
    EXPECT_EQ(WideString(record.machineId), WIDE("Ger\u00E4t \U0001F600"));
}

TEST(MachineIdServiceTest, takesTheLongestIdThatFitsWithItsNul) {
    MachineIdRecord record;
    ASSERT_EQ(Ask([] { return WideString(67, WideChar{'x'}); }, record), 0);
    EXPECT_EQ(WideString(record.machineId), WideString(67, WideChar{'x'}));
}

TEST(MachineIdServiceTest, failsForAnIdThatDoesNotFitAndLeavesTheRecord) {
    MachineIdRecord record;
    EXPECT_EQ(Ask([] { return WideString(68, WideChar{'x'}); }, record), static_cast<int32_t>(0x80004005));
    EXPECT_EQ(WideString(record.machineId), WIDE("before"));
}

TEST(MachineIdServiceTest, failsForAMachineWithoutIdAndLeavesTheRecord) {
    MachineIdRecord record;
    EXPECT_EQ(Ask([] { return WideString(); }, record), static_cast<int32_t>(0x80004005));
    EXPECT_EQ(WideString(record.machineId), WIDE("before"));
}

TEST(MachineIdServiceTest, failsWhenMemoryRunsOutAndLeavesTheRecord) {
    MachineIdRecord record;
    EXPECT_EQ(Ask([]() -> WideString { throw std::bad_alloc(); }, record), static_cast<int32_t>(0x8007000E));
    EXPECT_EQ(WideString(record.machineId), WIDE("before"));
}

TEST(MachineIdServiceTest, asksTheMachineAtEachCall) {
    static int calls;
    calls = 0;
    auto* const service =
        new MachineIdService(SID_MachineId, [] { return ++calls == 1 ? WideString() : WideString(WIDE("late")); });
    MachineIdRecord record{};
    EXPECT_NE(service->GetMachineId(&record), 0);
    EXPECT_EQ(service->GetMachineId(&record), 0);
    EXPECT_EQ(WideString(record.machineId), WIDE("late"));
    service->Release();
}

} // namespace

} // namespace siblings
