// A handle that is closed at the end of its scope.
#pragma once

#include "platform/processApi.h"

class ScopedHandle {
public:
    explicit ScopedHandle(platform::Handle handle) : m_handle(handle) {}
    ~ScopedHandle() { Close(); }
    ScopedHandle(const ScopedHandle&) = delete;
    ScopedHandle& operator=(const ScopedHandle&) = delete;

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
