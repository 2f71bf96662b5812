// Keeps exceptions within a sibling library.
#pragma once

#include <cstdint>
#include <exception>
#include <new>

#include "serviceResult.h"

namespace siblings {

// Runs `action` and returns its result. Converts std::bad_alloc to RESULT_OUT_OF_MEMORY and any other standard
// exception to RESULT_FAILED: library and caller can have different runtimes, which cannot exchange exceptions. Other
// exceptions pass through, such as the unwinding of a cancelled thread.
template <typename Action>
uint32_t Guarded(Action action) {
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return RESULT_OUT_OF_MEMORY;
    } catch (const std::exception&) {
        return RESULT_FAILED;
    }
}

} // namespace siblings
