// A handle that closes itself.
#pragma once

#include "platform/processApi.h"

// Owns a handle, which can be null, and closes it at the end of the scope. INVALID_HANDLE_VALUE is not null and would
// be closed: check for it before.
class ScopedHandle {
public:
    explicit ScopedHandle(platform::Handle handle) : m_handle(handle) {}
    ~ScopedHandle() { Close(); }
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;

    // Closes the handle now, if it is open.
    void Close() {
        if (m_handle != nullptr) {
            platform::CloseHandle(m_handle);
            m_handle = nullptr;
        }
    }

    platform::Handle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != nullptr; }

private:
    platform::Handle m_handle;
};
