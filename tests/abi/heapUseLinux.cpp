// The heap of the C library behind functions that count. Its own figures take a freed block that it keeps at hand for
// one in use.
#include <atomic>
#include <cerrno>

#include <malloc.h>

#include "abi/heapUse.h"

extern "C" {
void* __libc_malloc(size_t size);                     // NOLINT(bugprone-reserved-identifier): the C library's name
void* __libc_calloc(size_t count, size_t size);       // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, size_t size);       // NOLINT(bugprone-reserved-identifier)
void* __libc_memalign(size_t alignment, size_t size); // NOLINT(bugprone-reserved-identifier)
void __libc_free(void* block);                        // NOLINT(bugprone-reserved-identifier)
}

namespace {

std::atomic<size_t> bytesInUse{0};

void* Count(void* block) {
    bytesInUse += malloc_usable_size(block);
    return block;
}

void Discount(void* block) {
    bytesInUse -= malloc_usable_size(block);
}

} // namespace

// Take the place of the C library's, for this program and all that it loads.
extern "C" {

__attribute__((visibility("default"))) void* malloc(size_t size) noexcept {
    return Count(__libc_malloc(size));
}

__attribute__((visibility("default"))) void* calloc(size_t count, size_t size) noexcept {
    return Count(__libc_calloc(count, size));
}

__attribute__((visibility("default"))) void* realloc(void* block, size_t size) noexcept {
    Discount(block);
    return Count(__libc_realloc(block, size)); // tests have no use for one that fails and leaves the block
}

__attribute__((visibility("default"))) void* memalign(size_t alignment, size_t size) noexcept {
    return Count(__libc_memalign(alignment, size));
}

__attribute__((visibility("default"))) void* aligned_alloc(size_t alignment, size_t size) noexcept {
    return memalign(alignment, size);
}

__attribute__((visibility("default"))) int posix_memalign(void** out, size_t alignment, size_t size) noexcept {
    *out = memalign(alignment, size);
    return *out == nullptr ? ENOMEM : 0;
}

__attribute__((visibility("default"))) void free(void* block) noexcept {
    Discount(block);
    __libc_free(block);
}

} // extern "C"

namespace edge {

size_t HeapBytesInUse() {
    return bytesInUse;
}

} // namespace edge
