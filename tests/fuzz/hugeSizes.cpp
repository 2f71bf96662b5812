// Makes the allocation of a huge size fail, as it does on many machines: a record may claim any size, and the library
// allocates it by calloc. Linked with calloc wrapped.
#include <cstddef>

extern "C" {
void* __real_calloc(size_t count, size_t size); // the linker's name of calloc
void* __wrap_calloc(size_t count, size_t size);
}

void* __wrap_calloc(size_t count, size_t size) {
    constexpr size_t largest = size_t{1} << 27;
    return count > largest || size > largest || count * size > largest ? nullptr : __real_calloc(count, size);
}
