#include "system/inputStream.h"

#include <iterator>

#include "system/fileError.h"
#include "system/filePath.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

void ThrowIfStopped(const std::string& name) {
    if (StopRequested()) {
        throw Stopped("interrupted by " + StopCause() + " while reading " + name);
    }
}

} // namespace

InputStream::InputStream(const std::string& name) : m_buffer(name) {
    const std::filesystem::path path = PathOf(name);
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        throw FileError("cannot read " + name + ": it is a directory");
    }
    error = m_buffer.input.Open(path);
    if (error) {
        ThrowIfStopped(name);
        throw FileError("cannot read " + name + ": " + error.message());
    }
    m_stream.exceptions(std::ios::badbit);
}

InputStream::InputStream(Standard) : m_buffer("standard input") {
    m_buffer.input.TakeStandardInput();
    m_stream.exceptions(std::ios::badbit);
}

std::string InputStream::ReadAll() {
    return {std::istreambuf_iterator<char>(&m_buffer), std::istreambuf_iterator<char>()};
}

// A stream rethrows what this throws because badbit is among its exceptions.
std::streambuf::int_type InputStream::Buffer::underflow() {
    std::error_code error;
    const size_t length = input.Read(block.data(), block.size(), error);
    if (error) {
        throw FileError("cannot read " + name + ": " + error.message());
    }
    if (length == 0) {
        ThrowIfStopped(name);
        return traits_type::eof();
    }
    done += length;
    setg(block.data(), block.data(), block.data() + length);
    return traits_type::to_int_type(block.front());
}

} // namespace mordhost
