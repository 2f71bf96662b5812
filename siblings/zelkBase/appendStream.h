// What a log writer writes to.
#pragma once

#include <cstddef>
#include <string_view>

namespace siblings {

class AppendStream {
public:
    virtual ~AppendStream() = default;

    // Appends `bytes` in one write, and returns how many of them got there: all, or fewer when the system refused, as
    // on a full disk. Called by one thread at a time. Throws nothing and raises no signal.
    virtual size_t Append(std::string_view bytes) = 0;
};

} // namespace siblings
