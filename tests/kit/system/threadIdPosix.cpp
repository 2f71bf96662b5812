#include "kit/system/threadId.h"

#include <unistd.h>

uint32_t ThreadId() {
    return static_cast<uint32_t>(gettid());
}
