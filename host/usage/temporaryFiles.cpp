#include "usage/temporaryFiles.h"

#include <system_error>

#include "system/privateDirectory.h"

namespace mordhost {

TemporaryFiles::~TemporaryFiles() {
    if (!m_directory.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(m_directory, ignored);
    }
}

std::filesystem::path TemporaryFiles::NewPath() {
    if (m_directory.empty()) {
        m_directory = MakePrivateDirectory();
    }
    return m_directory / std::to_string(m_count++);
}

} // namespace mordhost
