#include "output/outputFile.h"

#include <cerrno>
#include <system_error>

#include "output/requireWritten.h"
#include "system/fileError.h"
#include "system/filePath.h"
#include "system/stopRequest.h"

namespace mordhost {

OutputFile::OutputFile(const std::string& name) : m_name(name) {
    errno = 0;
    m_stream.open(PathOf(name), std::ios::binary | std::ios::trunc);
    const int error = errno;
    if (!m_stream && StopRequested()) { // during the wait for the reader of a pipe
        throw Stopped("interrupted by " + StopCause() + " while opening " + name);
    }
    if (!m_stream) {
        throw FileError("cannot write " + name + ": " + std::generic_category().message(error));
    }
}

void OutputFile::Write(std::string_view text) {
    m_stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    RequireWritten(m_stream, m_name);
}

void OutputFile::Flush() {
    m_stream.flush();
    RequireWritten(m_stream, m_name);
}

} // namespace mordhost
