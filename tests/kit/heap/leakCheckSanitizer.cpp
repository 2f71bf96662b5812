#include <sanitizer/lsan_interface.h>

#include "kit/heap/leakCheck.h"

PauseLeakCheck::PauseLeakCheck() {
    __lsan_disable();
}

PauseLeakCheck::~PauseLeakCheck() {
    __lsan_enable();
}
