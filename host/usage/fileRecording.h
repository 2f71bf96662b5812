// A recording in event files.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "policy/eventReader.h"
#include "system/inputStream.h"
#include "usage/recording.h"
#include "usage/temporaryFiles.h"

namespace mordhost {

// The events of several files, one file after the other, as if they were one file.
class FileRecording final : public Recording {
public:
    enum class Use {
        once,     // Rewind is called once
        repeated, // copies what can be read only once, such as a pipe, to a temporary file
    };

    // Each of `names` is a file or "-" for the standard input, which occurs at most once. Opens and reads nothing yet.
    // Throws FileError.
    FileRecording(const std::vector<std::string>& names, Use use);

    // Both throw FileError, DocumentError, RunError and Stopped.
    void Rewind() override;
    bool Next(ConnectionEvent& event) override;

    const std::string& File() const override { return m_files[m_current].shown; }

    // The size of all files, 0 if it is unknown, and the number of bytes read since Rewind.
    uint64_t Size() const;
    uint64_t Done() const { return m_done + (m_input ? m_input->Done() : 0); }

private:
    struct Input {
        std::string shown;  // for messages
        std::string opened; // "-" for the standard input
    };

    void Open();
    std::unique_ptr<InputStream> Copy(InputStream& input, Input& file);

    std::vector<Input> m_files;
    const Use m_use;
    TemporaryFiles m_copies;
    size_t m_current = 0; // in m_files
    std::unique_ptr<InputStream> m_input;
    std::unique_ptr<EventReader> m_reader;
    uint64_t m_done = 0; // in the files before the current one
};

} // namespace mordhost
