// The first few of many events.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "policy/connectionEvent.h"

namespace mordhost {

// What identifies an event for a reader. A text may be empty.
struct NamedEvent {
    std::string file;
    size_t line = 0;
    std::string name;
    std::string remoteAddress;
    std::optional<uint16_t> localPort;

    bool operator==(const NamedEvent&) const = default;
};

// Counts events and keeps the first ones.
class EventSample {
public:
    // Adds an event of the file. Keeps it if there are fewer than `most`.
    void Add(const std::string& file, const ConnectionEvent& event, size_t most) {
        if (m_count++ < most) {
            m_first.push_back({file, event.line, event.name, event.remoteAddress.value_or(""), event.localPort});
        }
    }

    size_t Count() const { return m_count; }
    const std::vector<NamedEvent>& First() const { return m_first; }

private:
    size_t m_count = 0;
    std::vector<NamedEvent> m_first;
};

} // namespace mordhost
