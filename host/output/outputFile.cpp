#include "output/outputFile.h"

#include <cerrno>
#include <system_error>

#include "document/filePath.h"
#include "system/runError.h"

namespace mordhost {

OutputFile::OutputFile(const std::string& name) : m_name(name) {
    errno = 0;
    m_stream.open(PathOf(name), std::ios::binary | std::ios::trunc);
    if (!m_stream) {
        throw FileError("cannot write " + name + ": " + std::generic_category().message(errno));
    }
}

void OutputFile::Write(std::string_view text) {
    m_stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void OutputFile::Flush() {
    m_stream.flush();
    if (!m_stream) {
        throw RunError("cannot write " + m_name + ": output is lost");
    }
}

} // namespace mordhost
