// An owned handle of Windows.
#pragma once

#include <memory>

#include <windows.h>

namespace mordhost {

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// Null is no handle.
using OwnedHandle = std::unique_ptr<void, HandleCloser>;

// Takes ownership of `handle`. INVALID_HANDLE_VALUE, which CreateFile returns on failure, becomes null.
inline OwnedHandle Own(HANDLE handle) {
    return OwnedHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

} // namespace mordhost
