#include "unit/native/real/unreadableEnd.h"

#include <vector>

#include <windows.h>

namespace {

constexpr uintptr_t size = 0x10000;

// Wine keeps most of the lower 4 GiB mapped, so that memory there can be read when it is free; not the last 128 KiB of
// it, and not what nobody ever used.
std::vector<uintptr_t> Candidates() {
    if (sizeof(void*) == 4) {
        return {0xFFFD0000, 0x7FFD0000, 0x7FFC0000};
    }
    std::vector<uintptr_t> candidates;
    for (uintptr_t i = 1; i < 64; ++i) {
        candidates.push_back(static_cast<uintptr_t>(uint64_t{i} << 36));
    }
    return candidates;
}

bool Readable(uintptr_t address) {
    char byte = 0;
    SIZE_T count = 0;
    return ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(address), &byte, 1, &count) != FALSE;
}

uintptr_t Find() {
    for (const uintptr_t candidate : Candidates()) {
        void* const memory =
            VirtualAlloc(reinterpret_cast<void*>(candidate), size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
        if (memory != nullptr && !Readable(candidate + size)) {
            return candidate + size;
        }
    }
    return 0;
}

} // namespace

uintptr_t UnreadableEnd() {
    static const uintptr_t end = Find();
    return end;
}
