#include "live/liveLoop.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <iostream>
#include <utility>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "live/connectionWatcher.h"
#include "system/runError.h"

namespace mordhost {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds betweenLooks(20);

// While it lives, an interruption and a request to terminate make a handle readable instead of ending the process.
class StopSignals {
public:
    StopSignals() {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGINT);
        sigaddset(&signals, SIGTERM);
        sigprocmask(SIG_BLOCK, &signals, &m_former);
        m_handle = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
        if (m_handle < 0) {
            throw RunError("cannot wait for signals");
        }
    }
    ~StopSignals() {
        signalfd_siginfo signal;
        while (read(m_handle, &signal, sizeof signal) > 0) { // taken here, and not to be delivered again
        }
        close(m_handle);
        sigprocmask(SIG_SETMASK, &m_former, nullptr);
    }
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    int Handle() const { return m_handle; }

private:
    int m_handle = -1;
    sigset_t m_former{};
};

// Waits until the next look. Returns false when the process is to stop.
bool WaitForLook(const StopSignals& stop, const ConnectionWatcher& watcher) {
    pollfd handles[] = {{stop.Handle(), POLLIN, 0}, {watcher.Handle(), POLLIN, 0}}; // one of -1 is passed over
    poll(handles, 2, static_cast<int>(betweenLooks.count()));
    return handles[0].revents == 0;
}

} // namespace

void WatchConnections(const LiveOptions& options, const std::function<void(ConnectionEvent)>& handle) {
    const StopSignals stop;
    ConnectionWatcher watcher(options.flagged);
    if (!watcher.SeesAll()) {
        std::cerr << "mordhost: warning: without the right to administer the network (CAP_NET_ADMIN), connections "
                     "shorter than "
                  << betweenLooks.count() << " ms are missed\n";
    }
    std::cerr << "mordhost: watching inbound connections" << std::endl;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(options.seconds.value_or(0));
    bool wanted = true;
    while (wanted) {
        wanted = WaitForLook(stop, watcher) && !(options.seconds && Clock::now() >= end);
        for (ConnectionEvent& event : watcher.Look()) { // once more at the end, for what came meanwhile
            handle(std::move(event));
        }
    }
}

} // namespace mordhost
