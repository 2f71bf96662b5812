// For 64 bits, LLVM's linker puts the wrapper of an imported function in the place of the import as well: the linker's
// name for the function itself leads back to the wrapper. So the library that has the functions is asked for them.
#include "kit/heap/systemAllocator.h"

#include <windows.h>

namespace {

// Asked for at each call, in a way that allocates nothing: the first call comes before any variable is initialised.
template <typename Function>
Function* Imported(const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), name)));
}

} // namespace

void* SystemMalloc(size_t size) {
    return Imported<void*(size_t)>("malloc")(size);
}

void* SystemCalloc(size_t count, size_t size) {
    return Imported<void*(size_t, size_t)>("calloc")(count, size);
}

void* SystemRealloc(void* memory, size_t size) {
    return Imported<void*(void*, size_t)>("realloc")(memory, size);
}

void SystemFree(void* memory) {
    Imported<void(void*)>("free")(memory);
}
