#include "fuzz/inputRun.h"

#include <atomic>
#include <chrono>
#include <thread>

#include "fuzz/require.h"

namespace {

constexpr unsigned limitInSeconds = 20;

// Odd while an input runs.
std::atomic<uint32_t> runCount{0};

// An own thread, because the one that runs the input may hang. It looks once a second: an input costs two increments.
[[noreturn]] void WatchRuns() {
    unsigned seconds = 0;
    for (uint32_t last = 0;;) {
        std::this_thread::sleep_for(std::chrono::seconds(1));
        const uint32_t count = runCount.load();
        seconds = count == last && count % 2 == 1 ? seconds + 1 : 0;
        last = count;
        Require(seconds < limitInSeconds, "an input takes less than 20 seconds");
    }
}

} // namespace

void RunInput(FuzzTarget* target, const uint8_t* data, size_t size) {
    static const bool watched = [] {
        std::thread(WatchRuns).detach();
        return true;
    }();
    (void)watched;
    ++runCount;
    target(data, size);
    ++runCount;
}
