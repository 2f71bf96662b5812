#include <sanitizer/lsan_interface.h>

#include "logging/leakCheck.h"

PauseLeakCheck::PauseLeakCheck() {
    __lsan_disable();
}

PauseLeakCheck::~PauseLeakCheck() {
    __lsan_enable();
}
