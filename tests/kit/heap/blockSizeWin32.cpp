#include "kit/heap/blockSize.h"

#include <malloc.h>

namespace kit {

size_t BlockSize(void* block) {
    return _msize(block);
}

} // namespace kit
