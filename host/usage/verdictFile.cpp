#include "usage/verdictFile.h"

#include "system/filePath.h"
#include "system/runError.h"
#include "usage/recording.h"

namespace mordhost {

VerdictFile::VerdictFile() : m_path(m_files.NewPath()), m_out(m_path, std::ios::binary) {}

void VerdictFile::Write(bool allowed) {
    m_out.put(allowed ? '1' : '0');
}

void VerdictFile::Rewind() {
    if (m_out.is_open()) {
        m_out.close();
    }
    m_in.close();
    m_in.clear();
    m_in.open(m_path, std::ios::binary);
    if (!m_out || !m_in) {
        throw RunError("cannot keep the verdicts in " + Utf8Of(m_path) + ": output is lost");
    }
}

bool VerdictFile::Next() {
    const int verdict = m_in.get();
    if (verdict == std::ifstream::traits_type::eof()) {
        throw RunError(changedRecording);
    }
    return verdict == '1';
}

void VerdictFile::RequireEnd() {
    if (m_in.get() != std::ifstream::traits_type::eof()) {
        throw RunError(changedRecording);
    }
}

} // namespace mordhost
