#include "system/lostReaderPosix.h"

#include <poll.h>

#include "system/streamDescriptorPosix.h"

namespace mordhost {

bool HasLostReader(Stream stream) {
    pollfd state = {DescriptorOf(stream), 0, 0}; // these two events are always reported
    return poll(&state, 1, 0) == 1 && (state.revents & (POLLERR | POLLHUP)) != 0;
}

} // namespace mordhost
