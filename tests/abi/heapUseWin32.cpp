#include <windows.h>

#include "abi/heapUse.h"

namespace edge {

size_t HeapBytesInUse() {
    HANDLE heaps[64];
    const DWORD count = GetProcessHeaps(64, heaps);
    size_t bytes = 0;
    for (DWORD i = 0; i < count && i < 64; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry) != FALSE) {
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) {
                bytes += entry.cbData;
            }
        }
        HeapUnlock(heaps[i]);
    }
    return bytes;
}

} // namespace edge
