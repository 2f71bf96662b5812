// The processes of the system, and a target's parent.
#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "kit/system/scriptedProcess/nativeFixture.h"
#include "kit/system/scriptedProcess/pairingFixture.h"
#include "unit/native/targetProcessAccess.h"

namespace {

using namespace scripted;

class ProcessLists : public PairingFixture {
protected:
    // Sorted lines: the order of the vector tells nothing.
    Lines Listed() {
        Lines lines;
        for (const auto& one : Target().ListProcesses()) {
            lines.push_back(std::to_string(one->processId) + " " + std::to_string(one->parentProcessId) + " '" +
                            Narrow(one->imageName.c_str()) + "'");
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    // The bytes of the list as the system tells them.
    std::string ListSize() {
        uint32_t size = 0;
        EXPECT_LT(const_cast<Native&>(Target().Access()).QuerySystemInformation(57, nullptr, 0, &size), 0);
        system.TakeCalls();
        return std::to_string(size);
    }
};

TEST_P(ProcessLists, HaveIdParentAndNameOfEachProcess) {
    system.processList = {{4, 0, WIDE("System")}, {100, 4, WIDE("smss.exe")}, {3000, 100, WIDE("client.exe")}};
    EXPECT_EQ(Listed(), (Lines{"100 4 'smss.exe'", "3000 100 'client.exe'", "4 0 'System'"}));
}

TEST_P(ProcessLists, AreFetchedByAQueryForTheLengthAndASecondIntoAnAreaOfThatLength) {
    system.processList = {{4, 0, WIDE("System")}, {100, 4, WIDE("smss.exe")}};
    const std::string size = ListSize();
    Target().ListProcesses();
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"NtQuerySystemInformation(system, class 57, null, 0, length)", "VirtualAlloc(" + size + ")",
                     "NtQuerySystemInformation(system, class 57, buffer, " + size + ", length)", "VirtualFree(area)"}));
    EXPECT_EQ(system.openAreas, 0u);
}

TEST_P(ProcessLists, PassOverTheProcessWithId0AndGoOn) {
    system.processList = {{0, 0, {}}, {4, 0, WIDE("System")}, {0, 7, WIDE("x")}, {8, 4, WIDE("y")}};
    EXPECT_EQ(Listed(), (Lines{"4 0 'System'", "8 4 'y'"}));
}

TEST_P(ProcessLists, OfTheProcessWithId0AloneAreEmpty) {
    system.processList = {{0, 0, {}}};
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.openAreas, 0u);
}

TEST_P(ProcessLists, HaveAnEmptyNameForAProcessWithoutOne) {
    system.processList = {{4, 0, {}}, {8, 4, Text()}};
    EXPECT_EQ(Listed(), (Lines{"4 0 ''", "8 4 ''"}));
}

TEST_P(ProcessLists, TakeANameUpToItsFirstNul) {
    Text name = WIDE("abc");
    name += WideChar{};
    name += WIDE("def");
    system.processList = {{4, 0, name}};
    const auto list = Target().ListProcesses();
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0]->imageName, WIDE("abc"));
}

TEST_P(ProcessLists, KeepAProcessThatStandsTwice) {
    system.processList = {{4, 0, WIDE("System")}, {4, 0, WIDE("System")}};
    EXPECT_EQ(Listed(), (Lines{"4 0 'System'", "4 0 'System'"}));
}

TEST_P(ProcessLists, AreOrderedByTheAddressesOfTheRecords) {
    for (uint32_t i = 1; i <= 300; ++i) {
        system.processList.push_back({i, 0, WIDE("p.exe")});
    }
    const auto list = Target().ListProcesses();
    EXPECT_EQ(list.size(), 300u);
    EXPECT_TRUE(std::is_sorted(list.begin(), list.end()));
}

TEST_P(ProcessLists, AreEmptyWithoutTheFunction) {
    system.missing = {"NtQuerySystemInformation"};
    Target();
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.Count("NtQuerySystemInformation"), 0u);
    EXPECT_EQ(system.openAreas, 0u);
}

TEST_P(ProcessLists, AreEmptyWhenThereIsNoMemoryForTheArea) {
    system.processList = {{4, 0, WIDE("System")}};
    system.virtualAllocFails = true;
    Target();
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.Count("NtQuerySystemInformation"), 1u);
    EXPECT_EQ(system.Count("VirtualFree"), 0u);
}

TEST_P(ProcessLists, AreEmptyForEveryNegativeStatusOfTheSecondQueryAndTheAreaIsReleased) {
    system.processList = {{4, 0, WIDE("System")}};
    Target();
    for (const uint32_t status : negativeStatuses) {
        system.byCall[{"NtQuerySystemInformation", system.callCounts["NtQuerySystemInformation"] + 2}] = {status, true};
        EXPECT_EQ(Listed(), Lines{}) << Hex(status);
        EXPECT_EQ(system.openAreas, 0u);
    }
}

TEST_P(ProcessLists, AreDeliveredForAPositiveStatusOfTheSecondQuery) {
    system.processList = {{4, 0, WIDE("System")}};
    Target();
    for (const uint32_t status : positiveStatuses) {
        system.byCall[{"NtQuerySystemInformation", system.callCounts["NtQuerySystemInformation"] + 2}] = {status, true};
        EXPECT_EQ(Listed(), Lines{"4 0 'System'"}) << Hex(status);
    }
}

TEST_P(ProcessLists, AnyNegativeStatusOfTheFirstQueryIsTheOneThatIsExpected) {
    system.processList = {{4, 0, WIDE("System")}};
    Target();
    for (const uint32_t status : negativeStatuses) {
        system.Next("NtQuerySystemInformation", {status});
        EXPECT_EQ(Listed(), Lines{"4 0 'System'"}) << Hex(status);
    }
}

TEST_P(ProcessLists, ThatGrewBetweenTheQueriesAreEmptyWithoutAFurtherAttempt) {
    system.processList = {{4, 0, WIDE("System")}};
    system.processListGrowth = 96;
    Target();
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.Count("NtQuerySystemInformation"), 2u);
    EXPECT_EQ(system.openAreas, 0u);
}

TEST_P(ProcessLists, AreEmptyWhereTheFirstQuerySucceeds) {
    Target();
    system.Next("NtQuerySystemInformation", {0});
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.Count("VirtualAlloc"), 0u);
}

// Parents

TEST_P(ProcessLists, TheParentIsAskedForInTheReplyOfTheMachinesWidth) {
    target->parent = 4711;
    Target();
    EXPECT_EQ(Target().GetParentProcessId(), 4711u);
    const std::string function = CallerIsWow64() ? "NtWow64QueryInformationProcess64" : "NtQueryInformationProcess";
    const std::string size = GetParam() == Pairing::Machine32 ? "24" : "48";
    EXPECT_EQ(system.TakeCalls(), Lines{function + "(process 7, class 0, buffer, " + size + ", null)"});
}

TEST_P(ProcessLists, TheParentIs0WhenTheQueryFails) {
    target->parent = 4711;
    Target();
    const std::string function = CallerIsWow64() ? "NtWow64QueryInformationProcess64" : "NtQueryInformationProcess";
    for (const uint32_t status : negativeStatuses) {
        system.Next(function, {status, true});
        EXPECT_EQ(Target().GetParentProcessId(), 0u) << Hex(status);
    }
    for (const uint32_t status : positiveStatuses) {
        system.Next(function, {status, true});
        EXPECT_EQ(Target().GetParentProcessId(), 4711u) << Hex(status);
    }
}

TEST_P(ProcessLists, TheParentIs0WithoutTheFunction) {
    target->parent = 4711;
    system.missing = {CallerIsWow64() ? "NtWow64QueryInformationProcess64" : "NtQueryInformationProcess"};
    EXPECT_EQ(Target().GetParentProcessId(), 0u);
}

// A variant for a 32-bit machine whose query answers by itself.
class ParentOfA32BitMachine : public Native {
public:
    explicit ParentOfA32BitMachine(platform::Handle process) : Native(process, true) {}

    NtStatus QueryProcessInformation(uint32_t, void* buffer, uint32_t size, uint32_t*) override {
        const uint32_t reply[] = {0, 0, 0, 0, 0, 4711};
        if (size != sizeof reply) {
            return StatusFromWord(lengthMismatch);
        }
        std::memcpy(buffer, reply, sizeof reply);
        return 0;
    }
};

TEST_P(ProcessLists, TheParentOnA32BitMachineIsTheLastOfSixWords) {
    TargetProcessAccess{Target()}.SetVariant(std::make_unique<ParentOfA32BitMachine>(handle));
    EXPECT_EQ(Target().GetParentProcessId(), 4711u);
}

INSTANTIATE_TEST_SUITE_P(Pairings, ProcessLists, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

} // namespace
