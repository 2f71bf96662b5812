#include "native/x86Native.h"

#include "native/statusCall.h"

namespace {

uint64_t Refuse() {
    platform::SetLastStatusValue(static_cast<uint32_t>(STATUS_OF_REFUSED_REQUEST));
    return 0;
}

} // namespace

x86Native::x86Native(platform::Handle process) : Native(process, true) {}

NtStatus x86Native::GetThreadContext32(platform::Handle thread, void* context) {
    return StatusOf([&] { platform::GetThreadContext(thread, context); });
}

uint64_t x86Native::ReadPeb32(void* destination) {
    return ReadPlainPeb(destination);
}

uint64_t x86Native::ReadTeb32(platform::Handle thread, void* destination) {
    return ReadPlainTeb32(thread, destination);
}

NtStatus x86Native::GetThreadContext64(platform::Handle, void*) {
    return STATUS_OF_REFUSED_REQUEST;
}

uint64_t x86Native::ReadPeb64(void*) {
    return Refuse();
}

uint64_t x86Native::ReadTeb64(platform::Handle, void*) {
    return Refuse();
}

NtStatus x86Native::QueryVirtualMemory32(uint64_t address, uint32_t informationClass, void* buffer, uint32_t size) {
    return Native::QueryVirtualMemory(address, informationClass, buffer, size);
}
