#include "kit/heap/allocations.h"

#include "kit/heap/systemAllocator.h"

#include <chrono>
#include <cstdlib>
#include <new>

// What the linker puts in the place of the wrapped functions, and the clock itself.
extern "C" {
std::chrono::system_clock::time_point __real__ZNSt6chrono3_V212system_clock3nowEv();

void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_realloc(void* memory, size_t size);
void __wrap_free(void* memory);
std::chrono::system_clock::time_point __wrap__ZNSt6chrono3_V212system_clock3nowEv();
}

namespace {

// Plain variables: a variable of the thread would itself be allocated on some systems.
bool counting = false;
size_t calls = 0;
size_t bytes = 0;
size_t failAt = 0; // how many allocations are left, the failing one included; 0 when none is to fail
bool failsOn = false;
bool lastingFailure = false;
AllocationKind failed = AllocationKind::None;
size_t timeReads = 0;
long blocksHeld = 0;

// Whether an allocation may succeed.
bool Account(AllocationKind kind, size_t size) {
    if (counting) {
        ++calls;
        bytes += size;
    }
    if (failsOn) {
        return false;
    }
    if (failAt != 0 && --failAt == 0) {
        failed = kind;
        failsOn = lastingFailure;
        return false;
    }
    return true;
}

void* Held(void* memory) {
    blocksHeld += memory != nullptr ? 1 : 0;
    return memory;
}

} // namespace

void* __wrap_malloc(size_t size) {
    return Account(AllocationKind::Malloc, size) ? Held(SystemMalloc(size)) : nullptr;
}

void* __wrap_calloc(size_t count, size_t size) {
    return Account(AllocationKind::Calloc, count * size) ? Held(SystemCalloc(count, size)) : nullptr;
}

void* __wrap_realloc(void* memory, size_t size) {
    if (!Account(AllocationKind::Malloc, size)) {
        return nullptr;
    }
    void* const moved = SystemRealloc(memory, size);
    return memory == nullptr ? Held(moved) : moved;
}

void __wrap_free(void* memory) {
    blocksHeld -= memory != nullptr ? 1 : 0;
    SystemFree(memory);
}

std::chrono::system_clock::time_point __wrap__ZNSt6chrono3_V212system_clock3nowEv() {
    ++timeReads;
    return __real__ZNSt6chrono3_V212system_clock3nowEv();
}

void* operator new(size_t size) {
    if (Account(AllocationKind::New, size)) {
        if (void* const memory = Held(SystemMalloc(size == 0 ? 1 : size))) {
            return memory;
        }
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    __wrap_free(memory);
}

void operator delete(void* memory, size_t) noexcept {
    __wrap_free(memory);
}

AllocationCounter::AllocationCounter() {
    calls = 0;
    bytes = 0;
    counting = true;
}

AllocationCounter::~AllocationCounter() {
    counting = false;
}

size_t AllocationCounter::Calls() const {
    return calls;
}

size_t AllocationCounter::Bytes() const {
    return bytes;
}

FailingAllocations::FailingAllocations(size_t nth, bool lasting) {
    failed = AllocationKind::None;
    lastingFailure = lasting;
    failAt = nth;
}

void FailingAllocations::Stop() {
    failAt = 0;
    failsOn = false;
}

AllocationKind FailingAllocations::Failed() const {
    return failed;
}

long BlocksHeld() {
    return blocksHeld;
}

size_t TimeReads() {
    return timeReads;
}
