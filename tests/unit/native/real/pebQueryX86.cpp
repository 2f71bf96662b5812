#include "native/gate.h"
#include "native/native.h"
#include "native/nativeFunctionTable.h"
#include "native/ntFunctions.h"
#include "unit/native/real/pebQuery.h"

namespace {

// Asks the 64-bit ntdll through the gate.
NtStatus MORD_STDCALL QueryThroughGate(platform::Handle process, uint32_t informationClass, void* buffer, uint32_t size,
                                       uint32_t* returnedLength) {
    static const uint64_t function = GateResolve(GateNtdllBase(), "NtQueryInformationProcess");
    return GateStatus(GateCall(function, 5, GateArgument(process), uint64_t{informationClass}, GateArgument(buffer),
                               uint64_t{size}, GateArgument(returnedLength)));
}

constexpr auto name = "NtWow64QueryInformationProcess64";

} // namespace

bool LacksPebQuery(platform::Handle) {
    return platform::GetProcAddress(platform::GetModuleHandleW(L"ntdll.dll"), name) == nullptr;
}

void ProvidePebQuery() {
    const Native loadsTheTable(platform::GetCurrentProcess());
    GetNativeFunctionTable()[name] = reinterpret_cast<void*>(&QueryThroughGate);
}

void WithdrawPebQuery() {
    const Native loadsTheTable(platform::GetCurrentProcess());
    GetNativeFunctionTable().erase(name);
    LoadNativeFunction(GetNativeFunctionTable(), name, platform::GetModuleHandleW(L"ntdll.dll"));
}
