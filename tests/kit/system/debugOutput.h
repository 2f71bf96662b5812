// What this process writes to the system's debug output.
#pragma once

#include <memory>
#include <string>

namespace kit {

// Keeps what is written while the object lives; it does not go further then. One at a time.
class DebugOutput {
public:
    DebugOutput();
    ~DebugOutput();
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    // Everything so far, in UTF-8.
    std::string Text() const;

private:
    struct Capture;
    std::unique_ptr<Capture> m_capture;
};

} // namespace kit
