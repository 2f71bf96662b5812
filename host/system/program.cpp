#include "system/program.h"

#include <algorithm>
#include <string>

#include "system/filePath.h"
#include "system/runError.h"
#include "system/stopRequest.h"

namespace mordhost {

namespace {

constexpr std::chrono::milliseconds longestLook(100); // the delay to notice a stop request

} // namespace

Program::Program(const std::filesystem::path& file) : Program(file, Patience()) {}

Program::Program(const std::filesystem::path& file, const Patience& patience) : m_patience(patience), m_process(file) {
    WaitUntilReady(file);
}

Program::~Program() {
    if (!m_waitedFor) {
        End();
    }
}

bool Program::End() {
    LetGo();
    m_waitedFor = true;
    return m_process.WaitForEnd(m_patience.end);
}

void Program::WaitUntilReady(const std::filesystem::path& file) {
    using std::chrono::milliseconds;
    const std::string name = "the program " + Utf8Of(file);
    const auto start = std::chrono::steady_clock::now();
    while (true) {
        const auto waited = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
        if (waited >= m_patience.start) {
            throw RunError(name + " did not write within " + std::to_string(m_patience.start.count()) +
                           " ms the line that says that it is ready");
        }
        switch (m_process.Listen(std::min(m_patience.start - waited, longestLook))) {
        case ChildProcess::Heard::line:
            return;
        case ChildProcess::Heard::end:
            throw RunError(name + " ended its output without a line that says that it is ready");
        case ChildProcess::Heard::nothing:
            break;
        }
        if (StopRequested()) {
            throw Stopped("interrupted by " + StopCause() + " while " + name + " was not ready yet");
        }
    }
}

} // namespace mordhost
