// The output of a log writer.
#pragma once

#include <cstddef>
#include <string_view>

namespace siblings {

// An output that only grows, such as a log file.
class AppendStream {
public:
    virtual ~AppendStream() = default;

    // Appends `bytes` with one write and returns the number of bytes written: fewer than given, or 0, if the system
    // refuses, for example on a full disk. One thread at a time may call. Throws nothing and raises no signal.
    virtual size_t Append(std::string_view bytes) = 0;
};

} // namespace siblings
