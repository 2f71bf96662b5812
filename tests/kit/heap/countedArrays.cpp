// The one operator of the counted heap that a scripted process replaces itself, to limit the size of arrays.
#include <cstddef>
#include <new>

void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return operator new(size, nothrow); // counted, and given back in the same way
}
