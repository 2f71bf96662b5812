#include "kit/system/threadId.h"

#include <windows.h>

uint32_t ThreadId() {
    return ::GetCurrentThreadId();
}
