// The descriptors of the standard streams.
#pragma once

#include <unistd.h>

#include "system/hostSystem.h"

namespace mordhost {

inline int DescriptorOf(Stream stream) {
    return stream == Stream::input ? STDIN_FILENO : stream == Stream::output ? STDOUT_FILENO : STDERR_FILENO;
}

} // namespace mordhost
