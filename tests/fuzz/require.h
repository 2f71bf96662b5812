// Assertions on the result of every input, beside the checks of the sanitizers.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the process with a message unless `holds`. A fuzzing engine then keeps the input.
inline void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::fflush(stderr);
        std::abort();
    }
}
