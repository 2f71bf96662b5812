// A recording that is read several times.
#pragma once

#include <string>

#include "policy/connectionEvent.h"

namespace mordhost {

// The error of a recording that is not the same when it is read again.
constexpr auto changedRecording = "the recording changed while it was read";

class Recording {
public:
    virtual ~Recording() = default;

    // Goes back to the first event.
    virtual void Rewind() = 0;

    // Reads the next event into `event` and keeps the memory of its texts. Returns false at the end.
    virtual bool Next(ConnectionEvent& event) = 0;

    // The name of the file of the last event, for messages.
    virtual const std::string& File() const = 0;
};

} // namespace mordhost
