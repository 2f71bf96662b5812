// The path lookup of the Windows library, over the scripted system as a 32-bit caller has it.
#include <cstddef>
#include <stdexcept>

#include "kit/heap/countedHeap.h"
#include "kit/system/scriptedProcess/nativeFixture.h"
#include "kit/system/scriptedProcess/pairingFixture.h"
#include "kit/text/logRecords.h"
#include "kit/text/utf.h"
#include "logging/logState.h"
#include "mordRev/src/mordRev.h"
#include "unit/native/scriptedConverter.h"

namespace {

using namespace scripted;

const Text imagePath = WIDE("C:\\Program Files\\Client\\CLIENT.exe");
constexpr auto site = "procPathWin32.cpp CMordRecv::GetProcPathByPid";

class ProcPath : public PairingFixture {
protected:
    void SetUp() override {
        PairingFixture::SetUp();
        system.handles.clear(); // the lookup opens its own
        system.converterFactory = reinterpret_cast<void*>(&CreateScriptedConverter);
        scriptedConverterWrites = true;
        LogDebugViewEnabled = true;
        SetPath(imagePath);
    }
    void TearDown() override { LogDebugViewEnabled = false; }

    // Gives the target that image path, with room for a NUL.
    void SetPath(const Text& text) {
        target->memory.Clear();
        WithImage([&](auto& image) { image.AddText(target->memory, ImagePathName, text); });
        MapImage();
    }

    // The text of the image path as the target has it, for tests that change it.
    template <typename Change>
    void ChangeHeader(const Change& change) {
        WithImage([&](auto& image) {
            change(image.String(ImagePathName));
            image.Put(target->memory);
        });
    }

    // The lookup into a text that held something; every path of it has to close what it opened.
    bool Look(uint32_t pid = targetId) {
        path = "what was there";
        const bool found = CMordRecv::GetProcPathByPid(pid, &path);
        EXPECT_TRUE(system.handles.empty());
        EXPECT_EQ(system.wrongCloses, 0u);
        EXPECT_TRUE(found || path.empty());
        return found;
    }

    Lines TakeRecords() {
        Lines records;
        for (const Text& text : std::exchange(system.debugOutput, {})) {
            records.push_back(kit::MaskRecord(kit::ToNarrow(text)));
        }
        return records;
    }

    static std::string Failure(uint32_t pid = targetId) {
        return kit::Error(site, "get process path fail, pid=" + std::to_string(pid));
    }

    std::string path;
};

TEST_P(ProcPath, IsTheImagePathInLowerCase) {
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "c:\\program files\\client\\client.exe");
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_P(ProcPath, LowersAsciiCapitalsAloneAndIsUtf8) {
    SetPath(kit::ToWide("Z:\\\xC3\x84rger\\\xC3\x89T\xC3\x89\\\xCE\xA9.EXE@[`{"));
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "z:\\\xC3\x84rger\\\xC3\x89t\xC3\x89\\\xCE\xA9.exe@[`{");
}

TEST_P(ProcPath, StaysInTheFormThatTheBlockHolds) {
    SetPath(WIDE("\\Device\\HarddiskVolume1\\Dir\\File.exe"));
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "\\device\\harddiskvolume1\\dir\\file.exe");
    EXPECT_EQ(system.Count("QueryDosDeviceW"), 0u);
}

TEST_P(ProcPath, OpensTheProcessWithTwoRightsAndNoInheritanceOnceAndClosesItAtTheEnd) {
    Look();
    const Lines calls = system.TakeCalls();
    EXPECT_EQ(calls.front(), "OpenProcess(0x410, not inherited, 7)");
    EXPECT_EQ(std::count_if(calls.begin(), calls.end(), [](const auto& call) { return call.starts_with("Open"); }), 1);
    EXPECT_EQ(calls.back(), "CloseHandle(process 7)");
}

TEST_P(ProcPath, WalksNoThreadModuleOrProcessListAndEntersNoGate) {
    Look();
    for (const std::string beginning :
         {"GateC", "GateT", "CreateToolhelp32Snapshot", "OpenThread", "NtQuerySystemInformation",
          "NtQueryVirtualMemory", "NtQueryInformationThread", "QueryDosDeviceW", "VirtualAlloc"}) {
        EXPECT_EQ(system.Count(beginning), 0u) << beginning;
    }
}

TEST_P(ProcPath, AProcessThatCannotBeOpenedIsToldWithPidAndLastError) {
    EXPECT_FALSE(Look(4711));
    EXPECT_EQ(path, "");
    EXPECT_EQ(TakeRecords(), Lines{kit::Error(site, "Open process failed! pid=4711 ,lasterror=87")});
}

TEST_P(ProcPath, AProcessThatRefusesIsToldWithLastError5AndNotAskedForLesserRights) {
    system.denied = {targetId};
    EXPECT_FALSE(Look());
    EXPECT_EQ(system.Count("OpenProcess"), 1u);
    EXPECT_EQ(system.Count("OpenProcess(0x410, not inherited, 7)"), 1u);
    EXPECT_EQ(TakeRecords(), Lines{kit::Error(site, "Open process failed! pid=7 ,lasterror=5")});
}

TEST_P(ProcPath, NumbersInRecordsAreUnsignedDecimals) {
    system.processes.clear();
    EXPECT_FALSE(Look(0xFFFFFFFF));
    EXPECT_EQ(TakeRecords(), Lines{kit::Error(site, "Open process failed! pid=4294967295 ,lasterror=87")});
}

TEST_P(ProcPath, TheLastErrorIsReadFirstThingAndOnlyWhenLoggingIsOn) {
    Look(4711);
    EXPECT_EQ(system.Count("GetLastError"), 1u);
    Lines calls = system.TakeCalls();
    calls.resize(2); // behind them the record looks for its converter
    EXPECT_EQ(calls, (Lines{"OpenProcess(0x410, not inherited, 4711)", "GetLastError()"}));
    LogDebugViewEnabled = false;
    Look(4711);
    EXPECT_EQ(system.TakeCalls(), Lines{"OpenProcess(0x410, not inherited, 4711)"});
    EXPECT_EQ(TakeRecords().size(), 1u);
}

TEST_P(ProcPath, Pid0FailsAtOpenProcessAndPid4IsNoExceptionEither) {
    EXPECT_FALSE(Look(0));
    EXPECT_EQ(TakeRecords(), Lines{kit::Error(site, "Open process failed! pid=0 ,lasterror=87")});
    EXPECT_FALSE(Look(4));
    EXPECT_EQ(TakeRecords(), Lines{kit::Error(site, "Open process failed! pid=4 ,lasterror=87")});
}

TEST_P(ProcPath, AReadWithANegativeStatusIsToldAndTheHandleClosed) {
    const std::vector<uint64_t> addresses = WithImage([](auto& image) {
        return std::vector<uint64_t>{image.pebAddress +
                                         offsetof(std::remove_reference_t<decltype(image.peb)>, ProcessParameters),
                                     image.HeaderAddress(ImagePathName), image.TextAddress(ImagePathName)};
    });
    for (const uint64_t address : addresses) {
        for (const uint32_t status : negativeStatuses) {
            system.byAddress = {{address, {status, true}}};
            EXPECT_FALSE(Look()) << Hex(address) << " " << Hex(status);
            EXPECT_EQ(TakeRecords(), Lines{Failure()});
        }
    }
}

TEST_P(ProcPath, APebThatCannotBeHadIsTold) {
    target->peb32 = 0;
    target->peb64 = 0;
    EXPECT_FALSE(Look());
    EXPECT_EQ(TakeRecords(), Lines{Failure()});
}

TEST_P(ProcPath, ANullParametersPointerIsTold) {
    image32.peb.ProcessParameters = 0;
    image64.peb.ProcessParameters = 0;
    ChangeHeader([](auto&) {});
    EXPECT_FALSE(Look());
    EXPECT_EQ(TakeRecords(), Lines{Failure()});
}

TEST_P(ProcPath, AMissingFunctionOfTheTableIsTold) {
    system.missing = {"NtQueryInformationProcess", "NtWow64QueryInformationProcess64"};
    EXPECT_FALSE(Look());
    EXPECT_EQ(TakeRecords(), Lines{Failure()});
    EXPECT_FALSE(Look()); // nor is it looked for again
    EXPECT_EQ(TakeRecords(), Lines{Failure()});
}

// The table is loaded, by the first module handle, when the process has been opened and nothing of it has been read.
TEST_P(ProcPath, ATargetThatExitsBetweenTheOpenAndTheReadsIsTold) {
    for (const bool pebGoesToo : {false, true}) {
        NativeTableLoaded = false;
        size_t opensBefore = 0;
        system.onFirstModuleHandle = [&] {
            opensBefore = system.Count("OpenProcess");
            target->memory.Clear();
            if (pebGoesToo) {
                target->peb32 = target->peb64 = 0;
            }
        };
        EXPECT_FALSE(Look()) << pebGoesToo;
        EXPECT_EQ(opensBefore, 1u);
        EXPECT_EQ(TakeRecords(), Lines{Failure()});
        EXPECT_EQ(system.TakeCalls().back(), "CloseHandle(process 7)");
        SetPath(imagePath);
    }
}

TEST_P(ProcPath, WhoseDoubledReadRunsIntoMemoryThatIsNotThereFailsThoughTheStringIsReadable) {
    WithImage([this](auto& image) {
        target->memory.Unmap(image.TextAddress(ImagePathName));
        const auto size = image.String(ImagePathName).MaximumLength;
        image.AddText(target->memory, ImagePathName, imagePath, size, size + size_t{8});
    });
    EXPECT_FALSE(Look());
    EXPECT_EQ(TakeRecords(), Lines{Failure()});
}

TEST_P(ProcPath, ThatBeginsWithANulIsEmptyAndASuccess) {
    WithImage([this](auto& image) { target->memory.Put(image.TextAddress(ImagePathName), WideChar{}); });
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "");
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_P(ProcPath, WithAMaximumLengthOf0IsEmptyAndASuccess) {
    ChangeHeader([](auto& header) { header.MaximumLength = 0; });
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "");
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_P(ProcPath, WithTheLargestMaximumLengthIsDelivered) {
    const Text longPath = Text(WIDE("C:\\")) + Text(32700, WIDE('X')) + WIDE(".exe");
    WithImage([&](auto& image) {
        target->memory.Unmap(image.TextAddress(ImagePathName));
        image.AddText(target->memory, ImagePathName, longPath, 65535, 131070);
        image.Put(target->memory);
    });
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "c:\\" + std::string(32700, 'x') + ".exe");
}

TEST_P(ProcPath, ThatTheConverterTurnsIntoNothingIsEmptyAndASuccess) {
    scriptedConverterWrites = false;
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "");
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_P(ProcPath, WithoutAConverterIsEmptyAndASuccess) {
    system.missingModules = {"zelkbase.dll"};
    EXPECT_TRUE(Look());
    EXPECT_EQ(path, "");
}

TEST_P(ProcPath, AFailureIsToldBeforeTheHandleIsClosed) {
    target->peb32 = target->peb64 = 0;
    Lines told;
    system.onClose = [&] { told = TakeRecords(); };
    EXPECT_FALSE(Look());
    EXPECT_EQ(told, Lines{Failure()});
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_P(ProcPath, TheHandleIsClosedBeforeRecordAndObjectsGo) {
    size_t liveAtClose = 0;
    system.onClose = [&] { liveAtClose = kit::NewBlocksHeld(); };
    system.keepsCalls = false;
    LogDebugViewEnabled = false;
    EXPECT_TRUE(Look());
    path.shrink_to_fit();
    std::string other;
    CMordRecv::GetProcPathByPid(targetId, &other);
    EXPECT_GE(liveAtClose, kit::NewBlocksHeld() + 3); // the record, its text, the variant

    system.byAddress[WithImage([](auto& image) { return uint64_t{image.HeaderAddress(ImagePathName)}; })] = {
        0xC0000005};
    CMordRecv::GetProcPathByPid(targetId, &other);
    EXPECT_GE(liveAtClose, kit::NewBlocksHeld() + 1); // the variant
}

TEST_P(ProcPath, TenThousandLookupsWithFailuresAmongThemLeaveNoHandleAndNoMemory) {
    system.keepsCalls = false;
    LogDebugViewEnabled = false;
    const uint64_t header = WithImage([](auto& image) { return uint64_t{image.HeaderAddress(ImagePathName)}; });
    Look();
    path = std::string();
    const size_t before = kit::NewBlocksHeld();
    for (int i = 0; i < 10000; ++i) {
        std::string found;
        if (i % 5 == 1) {
            system.byAddress[header] = {partialCopy};
        }
        EXPECT_EQ(CMordRecv::GetProcPathByPid(i % 5 == 2 ? 4711 : targetId, &found), i % 5 != 1 && i % 5 != 2);
        system.byAddress.clear();
    }
    EXPECT_TRUE(system.handles.empty());
    EXPECT_EQ(system.wrongCloses, 0u);
    EXPECT_EQ(kit::NewBlocksHeld(), before);
}

INSTANTIATE_TEST_SUITE_P(Pairings, ProcPath, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

} // namespace
