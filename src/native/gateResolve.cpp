// Look-up of 64-bit functions by name, and conversion of NT statuses to last errors.
#include <atomic>
#include <cstring>

#include "native/cachedAddress.h"
#include "native/gate.h"
#include "native/gateLayouts.h"
#include "platform/callConv.h"
#include "platform/platform.h"

namespace {

constinit CachedAddress<uint64_t> loaderResolver;

using StatusToErrorFunction = uint32_t(MORD_STDCALL*)(uint32_t status);
using SetLastErrorFunction = void(MORD_STDCALL*)(uint32_t error);

// Both are looked up together while either is missing.
constinit std::atomic<StatusToErrorFunction> statusToErrorFunction = nullptr;
constinit std::atomic<SetLastErrorFunction> setLastErrorFunction = nullptr;

} // namespace

uint64_t GateResolve(uint64_t module, const char* name) {
    const uint64_t resolver = loaderResolver.Get(GateLoaderResolver);
    if (resolver == 0) {
        return 0;
    }
    gateLayouts::AnsiString text{};
    text.Length = static_cast<uint16_t>(std::strlen(name));
    text.MaximumLength = static_cast<uint16_t>(text.Length + 1);
    text.Buffer = GateArgument(name);
    uint64_t address = 0; // stays 0 on failure, so the status is not needed
    GateCall(resolver, 4, module, GateArgument(&text), uint64_t{0}, GateArgument(&address));
    return address;
}

void GateRecordStatus(uint64_t status) {
    auto statusToError = statusToErrorFunction.load(std::memory_order_relaxed);
    auto setLastError = setLastErrorFunction.load(std::memory_order_relaxed);
    if (statusToError == nullptr || setLastError == nullptr) {
        const platform::ModuleHandle ntdll = platform::GetModuleHandleW(WIDE("ntdll.dll"));
        statusToError =
            reinterpret_cast<StatusToErrorFunction>(platform::GetProcAddress(ntdll, "RtlNtStatusToDosError"));
        setLastError = reinterpret_cast<SetLastErrorFunction>(platform::GetProcAddress(ntdll, "RtlSetLastWin32Error"));
        statusToErrorFunction.store(statusToError, std::memory_order_relaxed);
        setLastErrorFunction.store(setLastError, std::memory_order_relaxed);
    }
    if (statusToError != nullptr && setLastError != nullptr) {
        setLastError(statusToError(static_cast<uint32_t>(status)));
    }
}
