// The peak memory of one event of a thousand rules with a hundred machine ids each, and the size of its answer. Prints
// both as figures.
//
// Counts the heap of this program: operator new, and malloc and its relatives, which the linker wraps (CMakeLists.txt).
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "libraryReceiver.h"
#include "mordRev/src/spareBlocks.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

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

size_t used = 0;
size_t peak = 0;

// The size precedes each block.
constexpr size_t headerSize = alignof(std::max_align_t);

void* Begin(void* block, size_t size) {
    if (block == nullptr) {
        return nullptr;
    }
    *static_cast<size_t*>(block) = size;
    used += size;
    peak = std::max(peak, used);
    return static_cast<char*>(block) + headerSize;
}

void* BlockOf(void* memory) {
    return static_cast<char*>(memory) - headerSize;
}

size_t SizeOf(void* memory) {
    return *static_cast<size_t*>(BlockOf(memory));
}

} // namespace

void* __wrap_malloc(size_t size) {
    return Begin(__real_malloc(size + headerSize), size);
}

void* __wrap_calloc(size_t count, size_t size) {
    return Begin(__real_calloc(1, count * size + headerSize), count * size);
}

void* __wrap_realloc(void* memory, size_t size) {
    if (memory == nullptr) {
        return __wrap_malloc(size);
    }
    // Both blocks are in use while the system copies one to the other.
    const size_t before = SizeOf(memory);
    peak = std::max(peak, used + size);
    used -= before;
    return Begin(__real_realloc(BlockOf(memory), size + headerSize), size);
}

void __wrap_free(void* memory) {
    if (memory != nullptr) {
        used -= SizeOf(memory);
        __real_free(BlockOf(memory));
    }
}

void* operator new(size_t size) {
    if (void* const memory = __wrap_malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    __wrap_free(memory);
}

void operator delete(void* memory, size_t) noexcept {
    __wrap_free(memory);
}

int main() {
    try {
        const bench::Workload workload({1000, 100});
        const bench::LibraryReceiver receiver;
        receiver.Interface().SetAllowList(bench::AllowListText(10).c_str());
        workload.Select();
        const size_t before = used;
        peak = used;
        const bool decided = workload.Decide(receiver.Interface());
        const size_t most = peak - before;
        const size_t kept = used - before; // for later events
        if (!decided || kept > mostSpareBlocks * blockSize) {
            std::cerr << "peakMemory: the event is not decided as expected, or keeps too much memory\n";
            return 1;
        }
        if (!workload.Decide(receiver.Interface()) || used != before + kept) {
            std::cerr << "peakMemory: a second event is not decided as expected, or keeps more memory\n";
            return 1;
        }
        bench::PrintFigure("AnswerSize", static_cast<double>(workload.Answer().size()));
        bench::PrintFigure("PeakMemory", static_cast<double>(most));
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "peakMemory: " << failure.what() << '\n';
        return 1;
    }
}
