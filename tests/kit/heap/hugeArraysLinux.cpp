// Replaces the global operators new[] and delete[]: an array of at least a GiB is a RepeatedMemory, which needs a few
// MiB. For programs that test one thread with texts of some GiB, and that read back only single places of them.
#include <cstdlib>
#include <map>
#include <memory>
#include <new>

#include "kit/system/repeatedMemoryLinux.h"

namespace {

constexpr size_t hugeSize = size_t{1} << 30;

std::map<void*, std::unique_ptr<kit::RepeatedMemory>>& HugeArrays() {
    static std::map<void*, std::unique_ptr<kit::RepeatedMemory>> arrays;
    return arrays;
}

void* Allocate(size_t size) {
    if (size < hugeSize) {
        return std::malloc(size == 0 ? 1 : size);
    }
    auto array = std::make_unique<kit::RepeatedMemory>(size);
    void* const data = array->Data();
    HugeArrays()[data] = std::move(array);
    return data;
}

} // namespace

void* operator new[](size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}

void operator delete[](void* memory) noexcept {
    if (HugeArrays().erase(memory) == 0) {
        std::free(memory);
    }
}

void operator delete[](void* memory, size_t) noexcept {
    operator delete[](memory);
}
