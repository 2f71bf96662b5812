#include "kit/system/countedClock.h"

#include <chrono>

// The linker's names for the wrapped clock.
extern "C" {
std::chrono::system_clock::time_point __real__ZNSt6chrono3_V212system_clock3nowEv();
std::chrono::system_clock::time_point __wrap__ZNSt6chrono3_V212system_clock3nowEv();
}

namespace {

size_t timeReads = 0;

} // namespace

std::chrono::system_clock::time_point __wrap__ZNSt6chrono3_V212system_clock3nowEv() {
    ++timeReads;
    return __real__ZNSt6chrono3_V212system_clock3nowEv();
}

namespace kit {

size_t TimeReads() {
    return timeReads;
}

} // namespace kit
