#include "native/nativeFunctionTable.h"

#include <algorithm>
#include <new>

#include <gtest/gtest.h>

#include "kit/system/scriptedProcess/internals.h"
#include "native/native.h"

namespace {

using namespace scripted;

const std::vector<std::string> ntdllNames = {
    "NtQuerySystemInformation",
    "RtlDosApplyFileIsolationRedirection_Ustr",
    "RtlInitUnicodeString",
    "RtlFreeUnicodeString",
    "RtlHashUnicodeString",
    "RtlUpcaseUnicodeChar",
    "NtQueryInformationProcess",
    "NtSetInformationProcess",
    "NtQueryInformationThread",
    "NtDuplicateObject",
    "NtQueryObject",
    "NtQuerySection",
    "RtlCreateActivationContext",
    "NtQueryVirtualMemory",
    "NtCreateThreadEx",
    "NtLockVirtualMemory",
    "NtSuspendProcess",
    "NtResumeProcess",
    "RtlImageNtHeader",
    "NtLoadDriver",
    "NtUnloadDriver",
    "RtlDosPathNameToNtPathName_U",
    "NtOpenEvent",
    "NtCreateEvent",
    "NtQueueApcThread",
    "RtlEncodeSystemPointer",
    "RtlQueueApcWow64Thread",
    "NtWow64QueryInformationProcess64",
    "NtWow64ReadVirtualMemory64",
    "NtWow64WriteVirtualMemory64",
};
const std::vector<std::string> kernel32Names = {
    "Wow64GetThreadContext", "Wow64SetThreadContext",      "Wow64SuspendThread",
    "GetProcessDEPPolicy",   "QueryFullProcessImageNameW",
};

std::vector<std::string> AllNames() {
    std::vector<std::string> names = ntdllNames;
    names.insert(names.end(), kernel32Names.begin(), kernel32Names.end());
    return names;
}

// The lines of a load from modules of those names; "null" where one is missing.
std::vector<std::string> LoadLines(const std::string& ntdll, const std::string& kernel32) {
    std::vector<std::string> lines = {"GetModuleHandleW(ntdll.dll)", "GetModuleHandleW(kernel32.dll)"};
    for (const std::string& name : ntdllNames) {
        lines.push_back("GetProcAddress(" + ntdll + ", " + name + ")");
    }
    for (const std::string& name : kernel32Names) {
        lines.push_back("GetProcAddress(" + kernel32 + ", " + name + ")");
    }
    return lines;
}

class FunctionTable : public testing::Test {
protected:
    void SetUp() override {
        Reset();
        GetNativeFunctionTable().clear();
        NativeTableLoaded = false;
    }

    System& system = Instance();
    NativeFunctionTable& table = GetNativeFunctionTable();
};

TEST(FunctionTableAtStart, IsEmptyAndNotLoaded) {
    EXPECT_FALSE(NativeTableLoaded);
    EXPECT_TRUE(GetNativeFunctionTable().empty());
}

TEST_F(FunctionTable, LoadsThirtyNamesFromNtdllAndFiveFromKernel32InTheirOrder) {
    LoadNativeFunctions();
    EXPECT_EQ(system.TakeCalls(), LoadLines("ntdll.dll", "kernel32.dll"));
    EXPECT_EQ(table.size(), 35u);
    for (const std::string& name : AllNames()) {
        ASSERT_EQ(table.count(name), 1u) << name;
        EXPECT_EQ(table.at(name), FunctionOfCaller(name)) << name;
    }
}

TEST_F(FunctionTable, ASystemWithoutTheWow64NamesLoadsTheRest) {
    const std::vector<std::string> all = AllNames();
    system.missing.insert(all.begin() + 27, all.begin() + 33);
    LoadNativeFunctions();
    EXPECT_EQ(table.size(), 29u);
    for (const std::string& name : all) {
        EXPECT_EQ(table.count(name), system.missing.count(name) == 0 ? 1u : 0u) << name;
    }
}

TEST_F(FunctionTable, ASystemWithoutAnyOneOfTheNamesLoadsTheOther34) {
    for (const std::string& gone : AllNames()) {
        table.clear();
        system.missing = {gone};
        LoadNativeFunctions();
        EXPECT_EQ(table.size(), 34u) << gone;
        EXPECT_EQ(table.count(gone), 0u) << gone;
    }
}

TEST_F(FunctionTable, AMissingModuleIsPassedOnAndFindsNothing) {
    system.missingModules = {"ntdll.dll"};
    LoadNativeFunctions();
    EXPECT_EQ(system.TakeCalls(), LoadLines("null", "kernel32.dll"));
    EXPECT_EQ(table.size(), 5u);

    table.clear();
    system.missingModules = {"ntdll.dll", "kernel32.dll"};
    LoadNativeFunctions();
    EXPECT_EQ(system.TakeCalls(), LoadLines("null", "null"));
    EXPECT_TRUE(table.empty());
}

TEST_F(FunctionTable, ANameThatIsFoundIsEnteredAndItsAddressReturned) {
    NativeFunctionTable own;
    void* const address = LoadNativeFunction(own, "NtOpenEvent", platform::GetModuleHandleW(WIDE("ntdll.dll")));
    EXPECT_EQ(address, FunctionOfCaller("NtOpenEvent"));
    EXPECT_EQ(own, (NativeFunctionTable{{"NtOpenEvent", address}}));
}

TEST_F(FunctionTable, ANameThatIsNotFoundLeavesTheTableUnchangedAndReturnsNull) {
    NativeFunctionTable own;
    system.missing = {"NtOpenEvent"};
    EXPECT_EQ(LoadNativeFunction(own, "NtOpenEvent", platform::GetModuleHandleW(WIDE("ntdll.dll"))), nullptr);
    EXPECT_TRUE(own.empty());
}

TEST_F(FunctionTable, ARepeatedNameLeavesTheFirstAddressInPlace) {
    char first = 0;
    NativeFunctionTable own{{"NtOpenEvent", &first}};
    void* const second = LoadNativeFunction(own, "NtOpenEvent", platform::GetModuleHandleW(WIDE("ntdll.dll")));
    EXPECT_EQ(second, FunctionOfCaller("NtOpenEvent"));
    EXPECT_EQ(own.at("NtOpenEvent"), &first);
}

TEST_F(FunctionTable, ANameIsLookedUpByItsExactText) {
    LoadNativeFunctions();
    EXPECT_NE(FindNativeFunction<void (*)()>("NtQueryObject"), nullptr);
    EXPECT_EQ(FindNativeFunction<void (*)()>("ntqueryobject"), nullptr);
    EXPECT_EQ(FindNativeFunction<void (*)()>("NtQueryObjects"), nullptr);
}

TEST_F(FunctionTable, TheFirstNativeLoadsItAndNoLaterOneDoes) {
    const Native first(OpenProcessHandle(7));
    EXPECT_TRUE(NativeTableLoaded);
    EXPECT_EQ(system.Count("GetProcAddress"), 35u);
    system.TakeCalls();
    const Native second(OpenProcessHandle(7));
    EXPECT_EQ(system.Count("GetProcAddress"), 0u);
    EXPECT_EQ(system.Count("GetModuleHandleW"), 0u);
}

TEST_F(FunctionTable, ANameThatWasMissingStaysMissing) {
    system.missing = {"NtQuerySystemInformation"};
    Native native(OpenProcessHandle(7));
    system.missing.clear();
    Native second(OpenProcessHandle(7));
    EXPECT_EQ(second.QuerySystemInformation(57, nullptr, 0, nullptr), STATUS_OF_MISSING_FUNCTION);
    EXPECT_EQ(system.Count("NtQuerySystemInformation"), 0u);
}

TEST_F(FunctionTable, TheByteIsSetBeforeTheLoadBegins) {
    std::vector<bool> seen;
    system.onFirstModuleHandle = [&] { seen.push_back(NativeTableLoaded); };
    const Native native(OpenProcessHandle(7));
    EXPECT_EQ(seen, std::vector<bool>{true});
}

TEST_F(FunctionTable, ALoadThatRunsOutOfMemoryIsNotRepeatedAndReleasesTheLock) {
    system.onFirstModuleHandle = [] { throw std::bad_alloc(); };
    const platform::Handle process = OpenProcessHandle(7);
    EXPECT_THROW(Native{process}, std::bad_alloc);
    Native native(process);
    EXPECT_EQ(native.QuerySystemInformation(57, nullptr, 0, nullptr), STATUS_OF_MISSING_FUNCTION);
    EXPECT_EQ(system.Count("GetProcAddress"), 0u);
}

} // namespace
