// The machine id service of the built library, on this machine.
#include <algorithm>
#include <cstring>
#include <iterator>

#include <gtest/gtest.h>

#include "unit/siblings/siblingLibrary.h"
#include "unit/siblings/systemKit.h"

namespace siblingTest {

namespace {

class MachineIdTest : public testing::Test {
protected:
    const SiblingLibrary library{std::string("ZelkBase")};
    const ServiceHolder<IMachineIdService> service = library.Make<IMachineIdService>(SID_MachineId);
};

TEST_F(MachineIdTest, returnsTheIdOfTheMachine) {
    const WideString expected = MachineIdOfSystem();
    ASSERT_FALSE(expected.empty()) << "this machine has no id";
    MachineIdRecord record{};
    ASSERT_EQ(service->GetMachineId(&record), 0);
    EXPECT_EQ(WideString(record.machineId), expected);
}

TEST_F(MachineIdTest, fillsTheRecordWithNuls) {
    MachineIdRecord record;
    std::memset(&record, 0xAB, sizeof record);
    ASSERT_EQ(service->GetMachineId(&record), 0);
    const auto end = std::find(std::begin(record.machineId), std::end(record.machineId), WideChar{});
    EXPECT_NE(end, std::end(record.machineId));
    EXPECT_TRUE(std::all_of(end, std::end(record.machineId), [](WideChar unit) { return unit == WideChar{}; }));
}

TEST_F(MachineIdTest, writesNothingBehindTheRecord) {
    struct {
        MachineIdRecord record;
        unsigned char behind[16];
    } place;
    std::memset(&place, 0xAB, sizeof place);
    ASSERT_EQ(service->GetMachineId(&place.record), 0);
    EXPECT_TRUE(std::all_of(std::begin(place.behind), std::end(place.behind), [](int byte) { return byte == 0xAB; }));
}

TEST_F(MachineIdTest, returnsTheSameIdFromEachObject) {
    MachineIdRecord first{};
    MachineIdRecord second{};
    ASSERT_EQ(service->GetMachineId(&first), 0);
    ASSERT_EQ(library.Make<IMachineIdService>(SID_MachineId)->GetMachineId(&second), 0);
    EXPECT_EQ(WideString(first.machineId), WideString(second.machineId));
}

TEST_F(MachineIdTest, rejectsANullRecord) {
    EXPECT_NE(service->GetMachineId(nullptr), 0);
}

} // namespace

} // namespace siblingTest
