#include "kit/heap/blockSize.h"

#include <malloc.h>

namespace kit {

size_t BlockSize(void* block) {
    return malloc_usable_size(block);
}

} // namespace kit
