#include "model/watch.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace model {
namespace {

constexpr int secondsOfACase = 120;

std::string watchedRun;
std::atomic<uint64_t> current = 0;

void Report(const char* what) {
    std::fprintf(stderr, "%s at case %llu of %s\n", what, static_cast<unsigned long long>(current.load()),
                 watchedRun.c_str());
    std::fflush(stderr);
}

// Not safe in general, but the process ends here anyway.
void OnSignal(int number) {
    std::signal(number, SIG_DFL);
    Report("crashed");
    std::raise(number);
}

void Watch() {
    uint64_t last = current;
    for (int seconds = 0; seconds < secondsOfACase; ++seconds) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        if (const uint64_t now = current; now != last) {
            last = now;
            seconds = 0;
        }
    }
    Report("timeout");
    std::_Exit(3);
}

} // namespace

void StartWatch(const std::string& run) {
    watchedRun = run;
    static const bool started = [] {
        for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL}) {
            std::signal(number, OnSignal);
        }
        std::thread(Watch).detach();
        return true;
    }();
    (void)started;
}

void WatchCase(uint64_t number) {
    current = number;
}

} // namespace model
