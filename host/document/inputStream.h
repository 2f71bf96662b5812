// A stream over a file or over the standard input.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "system/stoppableInput.h"

namespace mordhost {

// What a read of the stream throws: FileError where the system cannot read, Stopped where a request to stop broke it
// off. Neither looks like the end of the file.
class InputStream {
public:
    // Opens the file. Throws FileError, and Stopped when a request to stop was made while a pipe was waited for.
    explicit InputStream(const std::string& name);

    // The standard input.
    struct Standard {};
    explicit InputStream(Standard);

    std::istream& Stream() { return m_stream; }

    // What messages call it.
    const std::string& Name() const { return m_buffer.name; }

    // Whether the whole of it is there from the start, as in a file and not in a pipe.
    bool IsRegular() const { return m_buffer.input.IsRegular(); }

    // Bytes: of a regular file, and how many of them have been read.
    uint64_t Size() const { return m_buffer.input.Size(); }
    uint64_t Done() const { return m_buffer.done; }

private:
    struct Buffer final : public std::streambuf {
        explicit Buffer(std::string called) : name(std::move(called)), block(65536) {}
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
