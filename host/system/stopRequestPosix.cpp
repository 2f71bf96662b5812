// SIGINT, SIGTERM and SIGHUP are stop requests. SIGPIPE is not: the write that causes it fails.
#include "system/stopRequest.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <initializer_list>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "system/stopHandlePosix.h"

namespace mordhost {

namespace {

// Some programs send a signal twice, to the process and to its group. Within this time it is one request.
constexpr long sameRequest = 200; // milliseconds

volatile std::sig_atomic_t stopSignal = 0;
timespec firstRequest{};
int wakeUpReading = -1;
int wakeUpWriting = -1;

long MillisecondsSince(const timespec& start) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long>(now.tv_sec - start.tv_sec) * 1000 + (now.tv_nsec - start.tv_nsec) / 1000000;
}

// Calls only async-signal-safe functions.
extern "C" void NoteStopSignal(int signal) {
    const int error = errno;
    if (stopSignal == 0) {
        clock_gettime(CLOCK_MONOTONIC, &firstRequest);
        stopSignal = signal;
        [[maybe_unused]] const ssize_t written = write(wakeUpWriting, "", 1);
    } else if (signal == SIGINT && MillisecondsSince(firstRequest) >= sameRequest) {
        std::signal(SIGINT, SIG_DFL);
        std::raise(SIGINT); // takes effect after this handler returns
    }
    errno = error;
}

// A handler and not SIG_IGN, which the programs that this process starts would inherit.
extern "C" void PassOver(int) {}

void MakeWakeUp() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        throw RunError("cannot wait for signals: " + std::generic_category().message(errno));
    }
    wakeUpReading = ends[0];
    wakeUpWriting = ends[1];
}

void Handle(int signal, void (*handler)(int), const sigset_t& blocked) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_mask = blocked; // without SA_RESTART, so that a blocking call returns
    sigaction(signal, &action, nullptr);
}

// nohup ignores a signal this way, so that the process outlives its terminal.
bool IsIgnored(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

} // namespace

void HoldStopRequests() {
    MakeWakeUp();
    sigset_t all;
    sigemptyset(&all);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&all, signal);
    }
    // A shell ignores SIGINT for background processes. A SIGINT for this process is a request nevertheless.
    Handle(SIGINT, NoteStopSignal, all);
    Handle(SIGTERM, NoteStopSignal, all);
    if (!IsIgnored(SIGHUP)) {
        Handle(SIGHUP, NoteStopSignal, all);
    }
    Handle(SIGPIPE, PassOver, all);
}

bool StopRequested() {
    return stopSignal != 0;
}

std::string StopCause() {
    switch (stopSignal) {
    case SIGINT:
        return "SIGINT";
    case SIGTERM:
        return "SIGTERM";
    case SIGHUP:
        return "SIGHUP";
    default:
        return "";
    }
}

int StopHandle() {
    return wakeUpReading;
}

} // namespace mordhost
