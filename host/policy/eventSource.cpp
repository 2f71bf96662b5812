#include "policy/eventSource.h"

#include <utility>

namespace mordhost {

namespace {

constexpr size_t mostAhead = 1000;

InputStream Open(const std::string& name) {
    return name == EventSource::standardInput ? InputStream(InputStream::Standard()) : InputStream(name);
}

} // namespace

EventSource::EventSource(const std::string& name)
    : m_input(Open(name)), m_isLive(name == standardInput || !m_input.IsRegular()),
      m_reader(m_input.Stream(), m_input.Name()) {}

const std::deque<ConnectionEvent>& EventSource::LookAhead() {
    ConnectionEvent event;
    while (!m_isLive && m_ahead.size() < mostAhead && m_reader.Next(event)) {
        m_ahead.push_back(std::move(event));
    }
    return m_ahead;
}

bool EventSource::Next(ConnectionEvent& event) {
    if (m_ahead.empty()) {
        return m_reader.Next(event);
    }
    event = std::move(m_ahead.front());
    m_ahead.pop_front();
    return true;
}

} // namespace mordhost
