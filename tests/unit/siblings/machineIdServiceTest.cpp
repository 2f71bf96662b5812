// The machine id service with scripted ids.
#include <new>

#include <gtest/gtest.h>

#include "zelkBase/machineIdService.h"

namespace siblings {

namespace {

// Calls a service with the id of `source`. The record holds "before" until the service fills it.
int32_t Ask(MachineIdService::Source source, MachineIdRecord& record) {
    record = {WIDE("before")};
    auto* const service = new MachineIdService(SID_MachineId, source);
    const int32_t result = service->GetMachineId(&record);
    service->Release();
    return result;
}

TEST(MachineIdServiceTest, passesTheIdOnUnchanged) {
    MachineIdRecord record;
    ASSERT_EQ(Ask([] { return WideString(WIDE("Ger\u00E4t \U0001F600")); }, record), 0);
    EXPECT_EQ(WideString(record.machineId), WIDE("Ger\u00E4t \U0001F600"));
}

TEST(MachineIdServiceTest, acceptsTheLongestIdThatFitsWithItsNul) {
    MachineIdRecord record;
    ASSERT_EQ(Ask([] { return WideString(67, WideChar{'x'}); }, record), 0);
    EXPECT_EQ(WideString(record.machineId), WideString(67, WideChar{'x'}));
}

TEST(MachineIdServiceTest, failuresLeaveTheRecordUnchanged) {
    const struct {
        const char* name;
        MachineIdService::Source source;
        uint32_t result;
    } cases[] = {
        {"too long", [] { return WideString(68, WideChar{'x'}); }, 0x80004005},
        {"no id", [] { return WideString(); }, 0x80004005},
        {"no memory", []() -> WideString { throw std::bad_alloc(); }, 0x8007000E},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        MachineIdRecord record;
        EXPECT_EQ(static_cast<uint32_t>(Ask(each.source, record)), each.result);
        EXPECT_EQ(WideString(record.machineId), WIDE("before"));
    }
}

TEST(MachineIdServiceTest, readsTheIdAtEachCall) {
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
