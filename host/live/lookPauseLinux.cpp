#include "live/lookPause.h"

#include <algorithm>

#include <poll.h>

#include "system/stopHandlePosix.h"
#include "system/stopRequest.h"

namespace mordhost {

bool PauseBeforeLook(std::chrono::milliseconds pause, int handle, const std::function<bool()>& collect) {
    const auto due = std::chrono::steady_clock::now() + pause;
    while (!StopRequested()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(due - std::chrono::steady_clock::now());
        if (left <= std::chrono::milliseconds(0)) {
            return true;
        }
        pollfd handles[] = {{StopHandle(), POLLIN, 0}, {handle, POLLIN, 0}}; // poll ignores -1
        poll(handles, 2, static_cast<int>(left.count()));
        if (handles[1].revents != 0 && !collect()) {
            handle = -1;
        }
    }
    return false;
}

std::chrono::milliseconds PauseAfterLook(std::chrono::nanoseconds look) {
    constexpr std::chrono::milliseconds least(20);
    return std::max(least, std::chrono::ceil<std::chrono::milliseconds>(3 * look));
}

} // namespace mordhost
