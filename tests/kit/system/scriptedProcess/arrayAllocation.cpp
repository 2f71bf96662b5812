// new (std::nothrow) for arrays, which the script can make fail.
#include <new>

#include "kit/system/scriptedProcess/system.h"

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    auto& system = scripted::Instance();
    if (++system.arrayAllocations == system.failingArrayAllocation || size > system.largestArrayAllocation) {
        return nullptr;
    }
    try {
        return ::operator new[](size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
