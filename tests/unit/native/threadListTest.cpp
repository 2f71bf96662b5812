// The threads of a target and the file behind the start of each, for every pairing.
#include <cstddef>
#include <cstring>
#include <stdexcept>

#include "kit/system/scriptedProcess/lowStack.h"
#include "kit/system/scriptedProcess/nativeFixture.h"
#include "kit/system/scriptedProcess/pairingFixture.h"
#include "unit/native/targetProcessAccess.h"
#include "unit/native/threadGate.h"

namespace {

using namespace scripted;

class ThreadLists : public PairingFixture {
protected:
    void SetUp() override {
        PairingFixture::SetUp();
        BuildThreadGate();
        system.devices = {{'C', WIDE("\\Device\\Volume1")}};
        target->regions = {{base, 0x8000, WIDE("\\Device\\Volume1\\dir\\File.exe")}, {privateBase, 0x1000, Text()}};
        AddThread(9, start);
    }

    void AddThread(uint32_t id, uint64_t startAddress, uint32_t owner = targetId) {
        Thread thread{id, owner};
        thread.start = startAddress;
        system.threads.push_back(thread);
    }

    static std::string Line(const TheradData& thread) {
        return std::to_string(thread.threadId) + " " + Hex(thread.startAddress) + " " + Narrow(thread.path.c_str());
    }

    // What ListThreads and ReadThread give. They run on a low stack: a reply of a 32-bit system leads into itself.
    Lines Listed() {
        Lines lines;
        Target();
        OnLowStack([&] {
            for (const auto& thread : Target().ListThreads()) {
                lines.push_back(Line(*thread));
            }
        });
        return lines;
    }
    std::string Read(uint32_t id) {
        std::string found;
        Target();
        OnLowStack([&] {
            const auto thread = Target().ReadThread(id);
            found = thread == nullptr ? "none" : Line(*thread);
        });
        EXPECT_EQ(system.handles.size(), 1u); // that of the process
        EXPECT_EQ(system.wrongCloses, 0u);
        return found;
    }

    // The functions that answer the queries, by their names in the script.
    std::string ThreadQuery() const {
        return CallerIsWow64() ? "64-bit NtQueryInformationThread" : "NtQueryInformationThread";
    }
    std::string MemoryQuery() const { return CallerIsWow64() ? "64-bit NtQueryVirtualMemory" : "NtQueryVirtualMemory"; }

    // Scripts the memory query of that number among those to come.
    void NextMemoryQuery(unsigned number, Outcome outcome) {
        system.byCall[{MemoryQuery(), system.callCounts[MemoryQuery()] + number}] = outcome;
    }

    const uint64_t base = TargetIs32() ? 0x400000 : 0x7FF600400000;
    const uint64_t privateBase = base + 0x100000;
    const uint64_t start = base + 0x1234;
    const std::string line = "9 " + Hex(start) + " C:\\dir\\File.exe";
};

class ThreadListsOf32BitTargets : public ThreadLists {};

TEST_P(ThreadLists, HaveIdStartAddressAndPathOfEachThreadOfTheTarget) {
    AddThread(10, start + 1);
    EXPECT_EQ(Listed(), (Lines{line, "10 " + Hex(start + 1) + " C:\\dir\\File.exe"}));
}

TEST_P(ThreadLists, AreWalkedThroughASnapshotOfAllThreadsThatIsClosed) {
    system.threads.clear();
    AddThread(20, start, 99);
    AddThread(21, start, 98);
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.TakeCalls(), (Lines{"CreateToolhelp32Snapshot(4, 0)", "Thread32First(snapshot)",
                                         "Thread32Next(snapshot)", "Thread32Next(snapshot)", "CloseHandle(snapshot)"}));
}

TEST_P(ThreadLists, LeaveOutThreadsOfOtherProcesses) {
    AddThread(20, start, 99);
    EXPECT_EQ(Listed(), Lines{line});
    EXPECT_EQ(system.Count("OpenThread"), 1u);
}

TEST_P(ThreadLists, LeaveOutAThreadThatStartedInPrivateMemory) {
    AddThread(10, privateBase + 0x10);
    EXPECT_EQ(Listed(), Lines{line});
    EXPECT_EQ(Read(10), "none");
}

TEST_P(ThreadLists, LeaveOutAThreadThatCannotBeOpened) {
    AddThread(10, start);
    system.threads.back().opens = false;
    EXPECT_EQ(Listed(), Lines{line});
}

TEST_P(ThreadLists, OfAProcessThatHasExitedAreEmpty) {
    Target();
    system.threads.clear();
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.Count("CloseHandle(snapshot)"), 1u);
}

TEST_P(ThreadLists, AreEmptyWithoutASnapshotAndNothingIsClosed) {
    system.snapshotFails = true;
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.TakeCalls(), Lines{"CreateToolhelp32Snapshot(4, 0)"});
}

TEST_P(ThreadLists, CloseEveryHandleThatTheyOpened) {
    for (uint32_t id = 10; id < 30; ++id) {
        AddThread(id, id % 2 == 0 ? start : privateBase);
    }
    EXPECT_EQ(Listed().size(), 11u);
    EXPECT_EQ(system.handles.size(), 1u);
    EXPECT_EQ(system.wrongCloses, 0u);
}

TEST_P(ThreadLists, ASnapshotOfMinusOneIsWalkedAndClosed) {
    system.snapshotIsInvalid = true;
    EXPECT_EQ(Listed(), Lines{});
    EXPECT_EQ(system.TakeCalls(),
              (Lines{"CreateToolhelp32Snapshot(4, 0)", "Thread32First(self)", "CloseHandle(self)"}));
}

// One thread

TEST_P(ThreadLists, AThreadIsReadByTheDocumentedSteps) {
    EXPECT_EQ(Read(9), line);
    Lines calls = system.TakeCalls();
    std::erase_if(calls, [](const std::string& call) {
        return call.starts_with("GateCopyIn") || call.starts_with("GateCompare") ||
               call.starts_with("GateThreadBlock") || call.starts_with("GateCall(LdrGetProcedureAddress");
    });
    const std::string open = "OpenThread(0x1fffff, not inherited, 9)";
    const std::string width = TargetIs32() ? "4" : "8";
    const std::string size = GetParam() == Pairing::Machine32 ? "28" : "48";
    const auto memory = [&](uint64_t address, const std::string& rest) {
        return "NtQueryVirtualMemory(process 7, " + Hex(address) + ", " + rest + ", length)";
    };
    const Lines expected = CallerIsWow64()
                               ? Lines{open,
                                       "GateCall(NtQueryInformationThread, 5)",
                                       "GateCall(NtQueryVirtualMemory, 6)",
                                       "GateCall(NtQueryVirtualMemory, 6)",
                                       "QueryDosDeviceW(A:, 64)",
                                       "QueryDosDeviceW(B:, 64)",
                                       "QueryDosDeviceW(C:, 64)",
                                       "CloseHandle(thread 9)"}
                               : Lines{open,
                                       "NtQueryInformationThread(thread 9, class 9, buffer, " + width + ", null)",
                                       memory(start, "class 0, buffer, " + size),
                                       memory(base, "class 2, buffer, 1048"),
                                       "QueryDosDeviceW(A:, 64)",
                                       "QueryDosDeviceW(B:, 64)",
                                       "QueryDosDeviceW(C:, 64)",
                                       "CloseHandle(thread 9)"};
    EXPECT_EQ(calls, expected);
}

TEST_P(ThreadLists, TheQueriesThroughTheGateHaveTheSizesOfTheTargetAndOf64BitReplies) {
    if (!CallerIsWow64()) {
        EXPECT_EQ(Read(9), line); // no gate here; the test before checks the sizes
        EXPECT_EQ(system.Count("GateCall"), 0u);
        return;
    }
    const auto arguments = RecordGateArguments();
    EXPECT_EQ(Read(9), line);
    ASSERT_EQ(arguments->size(), 3u);
    EXPECT_EQ((*arguments)[0].at(1), 9u);
    EXPECT_EQ((*arguments)[0].at(3), TargetIs32() ? 4u : 8u);
    EXPECT_EQ((*arguments)[0].at(4), 0u);
    EXPECT_EQ((*arguments)[1].at(1), start);
    EXPECT_EQ((*arguments)[1].at(2), 0u);
    EXPECT_EQ((*arguments)[1].at(4), 48u);
    EXPECT_EQ((*arguments)[2].at(1), base);
    EXPECT_EQ((*arguments)[2].at(2), 2u);
    EXPECT_EQ((*arguments)[2].at(4), 1048u);
}

TEST_P(ThreadLists, AThreadOfAnUnknownIdIsNone) {
    EXPECT_EQ(Read(10), "none");
    EXPECT_EQ(system.TakeCalls(), Lines{"OpenThread(0x1fffff, not inherited, 10)"});
}

TEST_P(ThreadLists, AThreadIsNoneForEveryNegativeStatusOfTheQueryForItsStart) {
    for (const uint32_t status : negativeStatuses) {
        Target();
        system.Next(ThreadQuery(), {status, true});
        EXPECT_EQ(Read(9), "none") << Hex(status);
    }
    for (const uint32_t status : positiveStatuses) {
        system.Next(ThreadQuery(), {status, true});
        EXPECT_EQ(Read(9), line) << Hex(status);
    }
}

TEST_P(ThreadLists, AThreadIsNoneForEveryNegativeStatusOfEitherQueryOfMemory) {
    Target();
    for (const unsigned number : {1u, 2u}) {
        for (const uint32_t status : negativeStatuses) {
            NextMemoryQuery(number, {status, true});
            EXPECT_EQ(Read(9), "none") << number << " " << Hex(status);
        }
        for (const uint32_t status : positiveStatuses) {
            NextMemoryQuery(number, {status, true});
            EXPECT_EQ(Read(9), line) << number << " " << Hex(status);
        }
    }
}

TEST_P(ThreadLists, AThreadIsNoneWhenTheBaseOfItsMemoryIs0) {
    target->regions = {{0, UINT64_MAX, WIDE("\\Device\\Volume1\\x")}};
    EXPECT_EQ(Read(9), "none");
}

TEST_P(ThreadLists, AThreadWhoseReplyLeavesTheBaseAloneIsNone) {
    Target();
    NextMemoryQuery(1, {0, false}); // a success that delivered nothing: the block was cleared before
    EXPECT_EQ(Read(9), "none");
}

TEST_P(ThreadLists, AThreadIsNoneWhenNoDriveHasItsFile) {
    system.devices.clear();
    EXPECT_EQ(Read(9), "none");
}

TEST_P(ThreadLists, ThePathHasTheLengthOfTheReply) {
    system.mappedName.length = static_cast<uint16_t>(Text(WIDE("\\Device\\Volume1\\dir")).size() * 2);
    EXPECT_EQ(Read(9), "9 " + Hex(start) + " C:\\dir");
    system.mappedName.length = static_cast<uint16_t>(*system.mappedName.length - 1); // half a character does not count
    EXPECT_EQ(Read(9), "9 " + Hex(start) + " C:\\di");
}

TEST_P(ThreadLists, AReplyWithoutATextIsNone) {
    system.mappedName.length = 0;
    EXPECT_EQ(Read(9), "none");
}

TEST_P(ThreadLists, AReplyWithAnAddressOutsideItselfIsNone) {
    for (const uint64_t address : {uint64_t{0}, uint64_t{0x10}, uint64_t{0xFFFFFFF0}, uint64_t{0x7FFFFFFFFFF0}}) {
        system.mappedName.address = address;
        EXPECT_EQ(Read(9), "none") << Hex(address);
    }
}

TEST_P(ThreadLists, ALengthBeyondTheReplyIsTruncatedAtItsEnd) {
    target->regions[0].file = Text(WIDE("\\Device\\Volume1\\")) + Text(200, WIDE('n'));
    system.mappedName.fillsReply = true;
    system.mappedName.length = 0xFFFE;
    const size_t header = GetParam() == Pairing::Machine32 ? 8 : 16;
    const std::string read = Read(9);
    const std::string prefix = "9 " + Hex(start) + " C:\\";
    EXPECT_EQ(read.substr(0, prefix.size()), prefix);
    EXPECT_EQ(read.size() - prefix.size() + 16, (1048 - header) / 2); // 16 characters stood for "C:\"
}

TEST_P(ThreadLists, AThreadIsNoneWithoutTheFunctionsOfItsQueries) {
    if (CallerIsWow64()) {
        HideThreadGate({"NtQueryVirtualMemory"});
    } else {
        system.missing = {"NtQueryVirtualMemory"};
    }
    EXPECT_EQ(Read(9), "none");
    EXPECT_EQ(system.Count("OpenThread"), 1u);
    EXPECT_EQ(system.Count("CloseHandle(thread 9)"), 1u);
}

TEST_P(ThreadLists, AThreadIsNoneWithoutTheFunctionOfTheFirstQuery) {
    if (CallerIsWow64()) {
        HideThreadGate({"NtQueryInformationThread"});
    } else {
        system.missing = {"NtQueryInformationThread"};
    }
    EXPECT_EQ(Read(9), "none");
    EXPECT_EQ(system.Count("CloseHandle(thread 9)"), 1u);
}

TEST_P(ThreadLists, APathThatIsShorterThanADeviceNameThrowsOutOfRangeWithTheHandleClosed) {
    target->regions[0].file = WIDE("\\Device");
    Target();
    EXPECT_THROW(OnLowStack([&] { Target().ReadThread(9); }), std::out_of_range);
    EXPECT_THROW(Listed(), std::out_of_range);
    EXPECT_EQ(system.handles.size(), 1u);
}

// A variant for a 32-bit machine that keeps the addresses whole that memory queries ask for. Like every variant it has
// no fields of its own: its owner deletes it through the base.
std::vector<uint64_t> askedAddresses;

class AddressesOfQueries : public Native {
public:
    explicit AddressesOfQueries(platform::Handle process) : Native(process, true) {}

    NtStatus QueryThreadInformation(platform::Handle, uint32_t, void* buffer, uint64_t) override {
        const uint32_t startAddress = 0x80401234;
        std::memcpy(buffer, &startAddress, sizeof startAddress);
        return 0;
    }
    NtStatus QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t) override {
        askedAddresses.push_back(address);
        const uint32_t baseAddress = 0x80400000;
        std::memcpy(buffer, &baseAddress, sizeof baseAddress);
        return informationClass == 0 ? 0 : StatusFromWord(fileInvalid);
    }
};

TEST_P(ThreadLists, TheBaseOnA32BitMachineIsSignExtendedByThe64BitReadAlone) {
    askedAddresses.clear();
    TargetProcessAccess access{Target()};
    access.SetVariant(std::make_unique<AddressesOfQueries>(handle));
    EXPECT_EQ(access.ReadThread64(9), nullptr);
    EXPECT_EQ(access.ReadThread32(9), nullptr);
    EXPECT_EQ(askedAddresses, (std::vector<uint64_t>{0x80401234, 0xFFFFFFFF80400000, 0x80401234, 0x80400000}));
}

// The same with a file behind the start. The reply holds an address at each of the two places where a read may take it:
// 32 bits wide at offset 4, and 64 bits wide at offset 8. By default they lead to different names within the reply.
constexpr WideChar nameAt4[] = WIDE("\\Device\\Volume1\\At4.exe");
constexpr WideChar nameAt8[] = WIDE("\\Device\\Volume1\\At8.exe");
static_assert(sizeof nameAt4 == sizeof nameAt8);
constexpr uint32_t placeOfNameAt4 = 16;
constexpr uint32_t placeOfNameAt8 = 128;
uint32_t toldOffset = 0;   // where both addresses lead within the reply, unless it is 0
uintptr_t toldAddress = 0; // where both lead instead, unless it is 0

class NamesAtBothOffsets : public AddressesOfQueries {
public:
    using AddressesOfQueries::AddressesOfQueries;

    NtStatus QueryVirtualMemory(uint64_t address, uint32_t informationClass, void* buffer, uint64_t size) override {
        if (informationClass == 0) {
            return AddressesOfQueries::QueryVirtualMemory(address, informationClass, buffer, size);
        }
        const auto begin = reinterpret_cast<uintptr_t>(buffer);
        const auto leadsTo = [begin](uint32_t place) {
            return toldAddress != 0 ? toldAddress : begin + (toldOffset != 0 ? toldOffset : place);
        };
        const uint16_t lengths[] = {sizeof nameAt4 - sizeof(WideChar), sizeof nameAt4};
        const auto at4 = static_cast<uint32_t>(leadsTo(placeOfNameAt4));
        const uint64_t at8 = leadsTo(placeOfNameAt8);
        char* const reply = static_cast<char*>(buffer);
        std::memcpy(reply, lengths, sizeof lengths);
        std::memcpy(reply + 4, &at4, sizeof at4);
        std::memcpy(reply + 8, &at8, sizeof at8);
        std::memcpy(reply + placeOfNameAt4, nameAt4, sizeof nameAt4);
        std::memcpy(reply + placeOfNameAt8, nameAt8, sizeof nameAt8);
        return 0;
    }
};

TEST_P(ThreadLists, OnA32BitMachineTheReadOfA32BitTargetTakesTheAddressAtOffset4AndThatOfA64BitTargetAtOffset8) {
    TargetProcessAccess access{Target()};
    access.SetVariant(std::make_unique<NamesAtBothOffsets>(handle));
    const auto paths = [&] {
        Lines lines;
        for (const auto& thread : {access.ReadThread32(9), access.ReadThread64(9)}) {
            lines.push_back(thread == nullptr ? "none" : Narrow(thread->path.c_str()));
        }
        return lines;
    };
    const Lines none{"none", "none"};
    OnLowStack([&] {
        EXPECT_EQ(paths(), (Lines{"C:\\At4.exe", "C:\\At8.exe"}));
        toldOffset = 1046;
        EXPECT_EQ(paths(), none) << "the last character of the reply is no name";
        WideChar behind[std::size(nameAt4)];
        std::memcpy(behind, nameAt4, sizeof nameAt4);
        toldAddress = reinterpret_cast<uintptr_t>(&behind[0]);
        EXPECT_EQ(paths(), none) << "a name behind the reply";
        toldAddress = 0x10;
        EXPECT_EQ(paths(), none) << "before the reply";
        toldOffset = 0;
        toldAddress = 0;
    });
}

TEST_P(ThreadListsOf32BitTargets, AStartAboveTwoGiBIsZeroExtended) {
    system.threads.clear();
    AddThread(9, 0x80001234);
    target->regions = {{0x80000000, 0x8000, WIDE("\\Device\\Volume1\\File.exe")}};
    EXPECT_EQ(Read(9), "9 0x80001234 C:\\File.exe");
}

TEST_P(ThreadLists, RecordsOutliveTheObject) {
    std::shared_ptr<const TheradData> kept;
    OnLowStack([&] {
        TargetProcess object(handle, 0);
        kept = object.ReadThread(9);
    });
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(Line(*kept), line);
}

INSTANTIATE_TEST_SUITE_P(Pairings, ThreadListsOf32BitTargets, testing::ValuesIn(PairingsWith32BitTargets()),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Pairings, ThreadLists, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

} // namespace
