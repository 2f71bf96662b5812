#include "pebSteps.h"

#include "native/nativeFunctionTable.h"

namespace mordinspect {

namespace {

PebSteps* current = nullptr; // the replaced functions have no context parameter

template <typename Function, typename... Arguments>
NtStatus CallOriginal(void* original, Arguments... arguments) {
    return original == nullptr ? STATUS_OF_MISSING_FUNCTION : reinterpret_cast<Function>(original)(arguments...);
}

} // namespace

PebSteps::Entry::Entry(const char* name, void* function)
    : m_entry(*GetNativeFunctionTable().try_emplace(name).first), m_original(m_entry.second) {
    m_entry.second = function;
}

PebSteps::Entry::~Entry() {
    if (m_original == nullptr) {
        NativeFunctionTable& table = GetNativeFunctionTable();
        table.erase(table.find(m_entry.first));
    } else {
        m_entry.second = m_original;
    }
}

PebSteps::PebSteps()
    : m_plainQuery("NtQueryInformationProcess", reinterpret_cast<void*>(&PlainQuery)),
      m_query64("NtWow64QueryInformationProcess64", reinterpret_cast<void*>(&Query64)),
      m_read64("NtWow64ReadVirtualMemory64", reinterpret_cast<void*>(&Read64)) {
    current = this;
}

PebSteps::~PebSteps() {
    current = nullptr;
}

NtStatus PebSteps::PlainQuery(platform::Handle process, uint32_t informationClass, void* buffer, uint32_t size,
                              uint32_t* returnedLength) {
    const NtStatus status = CallOriginal<NtQueryInformationProcessFunction>(
        current->m_plainQuery.Original(), process, informationClass, buffer, size, returnedLength);
    current->m_query = status;
    return status;
}

NtStatus PebSteps::Query64(platform::Handle process, uint32_t informationClass, void* buffer, uint32_t size,
                           uint32_t* returnedLength) {
    const NtStatus status = CallOriginal<NtQueryInformationProcessFunction>(
        current->m_query64.Original(), process, informationClass, buffer, size, returnedLength);
    current->m_query = status;
    return status;
}

NtStatus PebSteps::Read64(platform::Handle process, uint64_t address, void* buffer, uint64_t size,
                          uint64_t* bytesRead) {
    const NtStatus status = CallOriginal<NtWow64ReadVirtualMemory64Function>(current->m_read64.Original(), process,
                                                                             address, buffer, size, bytesRead);
    current->m_read = status;
    return status;
}

} // namespace mordinspect
