// The one way to open and read a file or the standard input.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <utility>
#include <vector>

#include "system/stoppableInput.h"

namespace mordhost {

// A read throws FileError when the system cannot read, and Stopped when a stop request interrupts it. Neither looks
// like the end of the file. For use by one thread.
class InputStream {
public:
    // Opens the file `name` (UTF-8). Throws FileError, also for a directory, and Stopped when a stop request interrupts
    // the wait for the writer of a pipe.
    explicit InputStream(const std::string& name);

    // Reads the standard input.
    struct Standard {};
    explicit InputStream(Standard);

    std::istream& Stream() { return m_stream; }

    // Reads the rest of the input.
    std::string ReadAll();

    // The name for messages.
    const std::string& Name() const { return m_buffer.name; }

    // True for a regular file; false for a pipe, a terminal or another device.
    bool IsRegular() const { return m_buffer.input.IsRegular(); }

    // The size of a regular file and the number of bytes read so far.
    uint64_t Size() const { return m_buffer.input.Size(); }
    uint64_t Done() const { return m_buffer.done; }

private:
    struct Buffer final : public std::streambuf {
        explicit Buffer(std::string inputName) : name(std::move(inputName)), block(65536) {}
        int_type underflow() override;

        std::string name;
        StoppableInput input;
        std::vector<char> block;
        uint64_t done = 0;
    };

    Buffer m_buffer;
    std::istream m_stream{&m_buffer};
};

} // namespace mordhost
