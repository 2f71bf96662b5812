#include "unit/native/real/functions64.h"

#include <cstring>
#include <new>

#include <windows.h>

#include "native/gateEnter.h"

namespace {

size_t CodeSize() {
    return static_cast<size_t>(Recorder64End - Recorder64Begin);
}

} // namespace

Recorder64::Recorder64()
    : m_code(static_cast<char*>(VirtualAlloc(nullptr, CodeSize(), MEM_RESERVE | MEM_COMMIT, PAGE_EXECUTE_READWRITE))) {
    if (m_code == nullptr) {
        throw std::bad_alloc();
    }
    std::memcpy(m_code, Recorder64Begin, CodeSize());
}

Recorder64::~Recorder64() {
    VirtualFree(m_code, 0, MEM_RELEASE);
}

const Record64& Recorder64::Record() const {
    return *reinterpret_cast<const Record64*>(m_code + CodeSize() - sizeof(Record64));
}

void Recorder64::ChangeState(uint32_t sseControl, uint16_t x87Control) {
    auto& record = *reinterpret_cast<Record64*>(m_code + CodeSize() - sizeof(Record64));
    record.newSseControl = sseControl;
    record.newX87Control = x87Control;
}

MarkedCall CallGateMarked(uint64_t function, int32_t count, const std::array<uint64_t, 6>& values,
                          uint32_t misalignment) {
    std::array<uint32_t, 15> words{};
    std::memcpy(words.data(), &function, sizeof function);
    std::memcpy(words.data() + 2, &count, sizeof count);
    std::memcpy(words.data() + 3, values.data(), sizeof values);
    MarkedCall call;
    CallMarked(reinterpret_cast<const void*>(&GateCall), words.data(), static_cast<uint32_t>(words.size()),
               misalignment, &call.before, &call.after);
    return call;
}

// The assembly body writes by these.
static_assert(offsetof(MarkedState, flags) == 20 && offsetof(MarkedState, fs) == 24 && offsetof(MarkedState, cs) == 34);
static_assert(offsetof(MarkedState, x87Control) == 36 && offsetof(MarkedState, sseControl) == 40);
static_assert(offsetof(MarkedState, x87Stack) == 48 && offsetof(MarkedState, result) == 72);
static_assert(offsetof(Record64, stack) == 48 && offsetof(Record64, fs) == 64 && offsetof(Record64, calls) == 72);
static_assert(offsetof(Record64, sseControl) == 80 && offsetof(Record64, x87Control) == 84);
static_assert(offsetof(Record64, newSseControl) == 88 && offsetof(Record64, newX87Control) == 92);
static_assert(sizeof(Record64) == 96);
