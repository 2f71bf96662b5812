#include "kit/system/scriptedProcess/pairingFixture.h"

#include <stdexcept>

#include "kit/system/scriptedProcess/internals.h"

namespace scripted {

void PairingFixture::SetUp() {
    Reset();
    GetNativeFunctionTable().clear();
    NativeTableLoaded = false;
    system.architecture = GetParam() == Pairing::Machine32 ? 0 : 9;
    system.callerIsWow64 = CallerIsWow64() ? 1 : 0;
    target = &system.processes[targetId];
    target->isWow64 = TargetIs32() && GetParam() != Pairing::Machine32 ? 1 : 0;
    target->peb32 = image32.pebAddress;
    target->peb64 = image64.pebAddress;
    handle = OpenProcessHandle(targetId);
}

TargetProcess& PairingFixture::Target() {
    if (m_object == nullptr) {
        m_object = std::make_unique<TargetProcess>(handle, 0);
        system.TakeCalls();
    }
    return *m_object;
}

void PairingFixture::MapImage() {
    WithImage([this](auto& image) {
        image.Map(target->memory);
        image.Put(target->memory);
    });
}

std::vector<std::string> PairingFixture::ReadLines(uint64_t address, uint64_t size) const {
    const std::string arguments = "(process 7, " + Hex(address) + ", buffer, " + std::to_string(size) + ", ";
    if (CallerIsWow64()) {
        return {"NtWow64ReadVirtualMemory64" + arguments + "count)"};
    }
    return {"SetLastStatusValue(0x0)", "ReadProcessMemory" + arguments + "null)"};
}

std::vector<std::string> PairingFixture::PebLines() const {
    return TargetIs32() ? PebLinesOf32() : Peb64Lines();
}

std::vector<std::string> PairingFixture::PebLinesOf32() const {
    const std::string query =
        GetParam() == Pairing::Caller64Of32 ? "class 26, buffer, 8, null)" : "class 0, buffer, 24, length)";
    return {"NtQueryInformationProcess(process 7, " + query,
            "ReadProcessMemory(process 7, " + Hex(image32.pebAddress) + ", buffer, 592, null)"};
}

std::vector<std::string> PairingFixture::Peb64Lines() const {
    const std::string read = "(process 7, " + Hex(image64.pebAddress) + ", buffer, 904, ";
    if (CallerIsWow64()) {
        return {"NtWow64QueryInformationProcess64(process 7, class 0, buffer, 48, length)",
                "NtWow64ReadVirtualMemory64" + read + "count)"};
    }
    return {"NtQueryInformationProcess(process 7, class 0, buffer, 48, length)", "ReadProcessMemory" + read + "null)"};
}

std::vector<std::string> Join(std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> all;
    for (const auto& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace scripted
