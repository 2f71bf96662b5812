// The edge of a sibling library towards exceptions.
#pragma once

#include <cstdint>
#include <exception>
#include <new>

#include "serviceResult.h"

namespace siblings {

// Runs `action`, which returns a result, and turns an exception of the library's own code into one: sibling and caller
// may carry different runtimes, and no exception finds its way from one to the other. What is not an exception of the
// standard library, such as the unwinding of a cancelled thread, passes.
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
