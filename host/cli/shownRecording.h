// A recording with a progress bar.
#pragma once

#include <optional>

#include "output/progressBar.h"
#include "usage/fileRecording.h"

namespace mordhost {

// Shows on the standard error how much of the recording is read, a bar for each reading, if that is a terminal.
class ShownRecording final : public Recording {
public:
    explicit ShownRecording(FileRecording& recording) : m_recording(recording) {}

    void Rewind() override;
    bool Next(ConnectionEvent& event) override;
    const std::string& File() const override { return m_recording.File(); }

    // Removes the bar. Output and messages must follow it.
    void Finish() { m_bar.reset(); }

private:
    FileRecording& m_recording;
    std::optional<ProgressBar> m_bar;
    size_t m_events = 0;
};

} // namespace mordhost
