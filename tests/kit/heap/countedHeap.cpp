#include "kit/heap/countedHeap.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <new>
#include <thread>

#include "kit/heap/blockSize.h"
#include "kit/system/threadId.h"

// The linker's names for the wrapped functions: __wrap_ is called in their place, __real_ is the function itself.
extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t count, size_t size);
void* __real_realloc(void* memory, size_t size);
void __real_free(void* memory);

void* __wrap_malloc(size_t size);
void* __wrap_calloc(size_t count, size_t size);
void* __wrap_realloc(void* memory, size_t size);
void __wrap_free(void* memory);
}

namespace {

// No thread_local variables: some runtimes allocate these at their first use, which is within an allocation here.
std::atomic<uint32_t> watchedThread{0};
std::atomic<bool> counting{false};
std::atomic<size_t> allocationsToFailure{0}; // the failing one included; 0: none fails
std::atomic<bool> failing{false};            // every allocation
std::atomic<bool> failsNewAlone{false};
std::atomic<size_t> failingSize{0}; // 0: none
std::atomic<int> failureDelay{0};
std::atomic<long> blocksHeld{0};
std::atomic<long> newBlocksHeld{0};
std::atomic<long long> bytesHeld{0};
std::atomic<long long> mostBytesHeld{0};

// Used by the watched thread alone.
constexpr size_t keptSizes = 64;
size_t calls = 0;
size_t bytes = 0;
size_t callsOfNew = 0;
size_t sizesOfNew[keptSizes];
bool failureLasts = false;
kit::AllocationKind firstFailure = kit::AllocationKind::None;

bool FailsBySize(size_t size) {
    size_t limit = failingSize;
    if (limit == 0 || size < limit || !failingSize.compare_exchange_strong(limit, 0)) {
        return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(failureDelay));
    return true;
}

// Returns whether an allocation may succeed.
bool Account(kit::AllocationKind kind, size_t size) {
    if (FailsBySize(size)) {
        return false;
    }
    if ((!counting && !failing && allocationsToFailure == 0) || ThreadId() != watchedThread) {
        return true;
    }
    if (counting) {
        if (kind == kit::AllocationKind::New) {
            if (callsOfNew < keptSizes) {
                sizesOfNew[callsOfNew] = size;
            }
            ++callsOfNew;
        }
        ++calls;
        bytes += size;
    }
    if (failsNewAlone && kind != kit::AllocationKind::New) {
        return true;
    }
    if (failing) {
        return false;
    }
    if (allocationsToFailure != 0 && --allocationsToFailure == 0) {
        firstFailure = kind;
        failing = failureLasts;
        return false;
    }
    return true;
}

void AddBytes(size_t size) {
    const long long held = bytesHeld += static_cast<long long>(size);
    long long most = mostBytesHeld;
    while (most < held && !mostBytesHeld.compare_exchange_weak(most, held)) {
    }
}

void* Held(void* memory) {
    if (memory != nullptr) {
        ++blocksHeld;
        AddBytes(kit::BlockSize(memory));
    }
    return memory;
}

void* AllocateForNew(size_t size) {
    void* const memory = Account(kit::AllocationKind::New, size) ? Held(__real_malloc(size == 0 ? 1 : size)) : nullptr;
    newBlocksHeld += memory != nullptr ? 1 : 0;
    return memory;
}

void* AllocateOrThrow(size_t size) {
    if (void* const memory = AllocateForNew(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void Delete(void* memory) {
    newBlocksHeld -= memory != nullptr ? 1 : 0;
    __wrap_free(memory);
}

} // namespace

void* __wrap_malloc(size_t size) {
    return Account(kit::AllocationKind::Malloc, size) ? Held(__real_malloc(size)) : nullptr;
}

void* __wrap_calloc(size_t count, size_t size) {
    return Account(kit::AllocationKind::Calloc, count * size) ? Held(__real_calloc(count, size)) : nullptr;
}

void* __wrap_realloc(void* memory, size_t size) {
    if (!Account(kit::AllocationKind::Malloc, size)) {
        return nullptr;
    }
    if (memory == nullptr) {
        return Held(__real_realloc(nullptr, size));
    }
    const size_t before = kit::BlockSize(memory);
    void* const moved = __real_realloc(memory, size);
    if (moved != nullptr) {
        AddBytes(kit::BlockSize(moved));
        bytesHeld -= static_cast<long long>(before);
    }
    return moved;
}

void __wrap_free(void* memory) {
    if (memory != nullptr) {
        --blocksHeld;
        bytesHeld -= static_cast<long long>(kit::BlockSize(memory));
    }
    __real_free(memory);
}

void* operator new(size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return AllocateForNew(size);
}
void operator delete(void* memory) noexcept {
    Delete(memory);
}
void operator delete[](void* memory) noexcept {
    Delete(memory);
}
void operator delete(void* memory, size_t) noexcept {
    Delete(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    Delete(memory);
}

namespace kit {

AllocationCounter::AllocationCounter() {
    watchedThread = ThreadId();
    calls = 0;
    bytes = 0;
    callsOfNew = 0;
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

std::vector<size_t> AllocationCounter::Sizes() {
    counting = false;
    return {sizesOfNew, sizesOfNew + std::min(callsOfNew, keptSizes)};
}

HeapUse::HeapUse() : m_before(bytesHeld) {
    mostBytesHeld = m_before;
}

long long HeapUse::Bytes() const {
    return bytesHeld - m_before;
}

long long HeapUse::MostBytes() const {
    return mostBytesHeld - m_before;
}

FailingAllocations::FailingAllocations(size_t nth, bool lasting) {
    watchedThread = ThreadId();
    firstFailure = AllocationKind::None;
    failureLasts = lasting;
    failsNewAlone = false;
    allocationsToFailure = nth;
}

FailingNew::FailingNew(size_t nth) : FailingAllocations(nth) {
    failsNewAlone = true;
}

void FailingAllocations::Stop() {
    allocationsToFailure = 0;
    failing = false;
    failsNewAlone = false;
}

AllocationKind FailingAllocations::Failed() const {
    return firstFailure;
}

void FailNextOf(size_t size, int milliseconds) {
    failureDelay = milliseconds;
    failingSize = size;
}

long BlocksHeld() {
    return blocksHeld;
}

long NewBlocksHeld() {
    return newBlocksHeld;
}

} // namespace kit
