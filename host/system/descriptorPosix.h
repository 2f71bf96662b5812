// An owned file descriptor.
#pragma once

#include <system_error>
#include <utility>

#include <unistd.h>

#include "system/lastErrorPosix.h"

namespace mordhost {

// Closes its descriptor. -1 is no descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Get() const { return m_descriptor; }
    bool IsOpen() const { return m_descriptor >= 0; }

    // Returns the error of a delayed write, if any.
    std::error_code Close() {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor < 0 || close(descriptor) == 0 ? std::error_code() : LastError();
    }

private:
    int m_descriptor = -1;
};

} // namespace mordhost
