#include "native/gateWrappers.h"

#include "native/cachedAddress.h"
#include "native/gate.h"

namespace {

// An NT function of the 64-bit half, looked up at its first use.
class GateFunction {
public:
    constexpr explicit GateFunction(const char* name) : m_name(name) {}

    // Returns whether the system has it. A failed look-up is repeated at the next call.
    bool Find() { return Address() != 0; }

    // Calls the function; Find must have succeeded. Returns true for the status 0 and records any other as last error.
    template <typename... Arguments>
    bool Call(Arguments... arguments) {
        const uint64_t status = GateCall(Address(), sizeof...(arguments), static_cast<uint64_t>(arguments)...);
        if (status != 0) {
            GateRecordStatus(status);
        }
        return status == 0;
    }

private:
    uint64_t Address() {
        return m_address.Get([this] { return GateResolve(GateNtdllBase(), m_name); });
    }

    const char* m_name;
    CachedAddress<uint64_t> m_address;
};

constinit GateFunction getContext("NtGetContextThread");
constinit GateFunction setContext("NtSetContextThread");
constinit GateFunction readMemory("NtReadVirtualMemory");
constinit GateFunction writeMemory("NtWriteVirtualMemory");
constinit GateFunction allocateMemory("NtAllocateVirtualMemory");
constinit GateFunction freeMemory("NtFreeVirtualMemory");
constinit GateFunction protectMemory("NtProtectVirtualMemory");
constinit GateFunction queryMemory("NtQueryVirtualMemory");

// Reads or writes. The local count starts at the caller's value, which changes on success only.
bool Transfer(GateFunction& function, platform::Handle process, uint64_t address, const void* local, uint32_t size,
              uint64_t* count) {
    if (!function.Find()) {
        return false;
    }
    uint64_t transferred = count != nullptr ? *count : 0;
    if (!function.Call(GateArgument(process), address, GateArgument(local), size, GateArgument(&transferred))) {
        return false;
    }
    if (count != nullptr) {
        *count = transferred;
    }
    return true;
}

} // namespace

bool GateGetContext(platform::Handle thread, void* context) {
    return getContext.Find() && getContext.Call(GateArgument(thread), GateArgument(context));
}

bool GateSetContext(platform::Handle thread, const void* context) {
    return setContext.Find() && setContext.Call(GateArgument(thread), GateArgument(context));
}

bool GateReadMemory(platform::Handle process, uint64_t address, void* destination, uint32_t size, uint64_t* count) {
    return Transfer(readMemory, process, address, destination, size, count);
}

bool GateWriteMemory(platform::Handle process, uint64_t address, const void* source, uint32_t size, uint64_t* count) {
    return Transfer(writeMemory, process, address, source, size, count);
}

uint64_t GateAllocateMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t allocationType,
                            uint32_t protection) {
    uint64_t base = address;
    uint64_t size64 = size;
    const bool allocated =
        allocateMemory.Find() && allocateMemory.Call(GateArgument(process), GateArgument(&base), uint64_t{0},
                                                     GateArgument(&size64), allocationType, protection);
    return allocated ? base : 0;
}

bool GateFreeMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t freeType) {
    uint64_t base = address;
    uint64_t size64 = size;
    return freeMemory.Find() &&
           freeMemory.Call(GateArgument(process), GateArgument(&base), GateArgument(&size64), freeType);
}

bool GateProtectMemory(platform::Handle process, uint64_t address, uint32_t size, uint32_t protection,
                       uint32_t* oldProtection) {
    uint64_t base = address;
    uint64_t size64 = size;
    return protectMemory.Find() && protectMemory.Call(GateArgument(process), GateArgument(&base), GateArgument(&size64),
                                                      protection, GateArgument(oldProtection));
}

uint32_t GateQueryMemory(platform::Handle process, uint64_t address, void* buffer, uint32_t size) {
    if (!queryMemory.Find()) {
        return 0;
    }
    uint64_t length = 0;
    queryMemory.Call(GateArgument(process), address, uint64_t{0}, GateArgument(buffer), size, GateArgument(&length));
    return static_cast<uint32_t>(length);
}
