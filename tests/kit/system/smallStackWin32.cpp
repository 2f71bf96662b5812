#include "kit/system/smallStack.h"

#include <stdexcept>
#include <string>

#include <windows.h>

namespace {

// A system may round a small stack up, as Wine does to a mebibyte; what it gives too much is used up first.
DWORD WINAPI Run(void* work) {
    const size_t left = StackLeft();
    if (left > smallStackSize) {
        *static_cast<volatile char*>(__builtin_alloca(left - smallStackSize)) = 0;
    }
    (*static_cast<const std::function<void()>*>(work))();
    return 0;
}

} // namespace

void RunOnSmallStack(const std::function<void()>& work) {
    const HANDLE thread = ::CreateThread(nullptr, smallStackSize, Run, const_cast<std::function<void()>*>(&work),
                                         STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread == nullptr) {
        throw std::runtime_error("CreateThread: error " + std::to_string(::GetLastError()));
    }
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
}

size_t StackLeft() {
    ULONG_PTR low = 0;
    ULONG_PTR high = 0;
    ::GetCurrentThreadStackLimits(&low, &high);
    return reinterpret_cast<ULONG_PTR>(__builtin_frame_address(0)) - low;
}
