#include "cli/shownRecording.h"

#include <iostream>

#include "system/hostSystem.h"

namespace mordhost {

void ShownRecording::Rewind() {
    m_bar.reset();
    m_events = 0;
    m_recording.Rewind();
    const uint64_t size = IsTerminal(Stream::error) ? m_recording.Size() : 0;
    if (size > 0) {
        m_bar.emplace(std::cerr, true, size);
    }
}

bool ShownRecording::Next(ConnectionEvent& event) {
    if (!m_recording.Next(event)) {
        return false;
    }
    ++m_events;
    if (m_bar) {
        m_bar->Advance(m_recording.Done(), m_events);
    }
    return true;
}

} // namespace mordhost
