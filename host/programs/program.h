// A program that runs so that there is a real process behind an event.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>

#include "programs/childProcess.h"

namespace mordhost {

// It says by a line on its standard output, whatever stands in it, that it is ready, and ends when its standard input
// does. What it writes behind that line is not read.
class Program {
public:
    struct Patience {
        std::chrono::milliseconds start{10000}; // until it is ready
        std::chrono::milliseconds end{3000};    // from the end of its standard input to its own
    };

    // Starts the program in `file`, without arguments, and waits until it is ready. Throws RunError when it cannot be
    // started, ends its output without a line, or does not get ready in time, and when the run is interrupted
    // meanwhile; the process has ended then.
    explicit Program(const std::filesystem::path& file);
    Program(const std::filesystem::path& file, const Patience& patience);

    // Ends it.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    uint32_t Id() const { return m_process.Id(); }

    // Tells it to end, without waiting.
    void LetGo() { m_process.CloseInput(); }

    // Tells it to end and waits, as long as patience lasts. Whether it has ended by itself; one that has not is ended
    // by force when this object goes, which does not wait a second time.
    bool End();

private:
    void WaitUntilReady(const std::filesystem::path& file);

    const Patience m_patience;
    ChildProcess m_process;
    bool m_waitedFor = false;
};

} // namespace mordhost
