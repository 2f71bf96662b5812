// What must hold of every input, beside what the sanitizers look for.
#pragma once

#include <cstdio>
#include <cstdlib>

// Ends the process where it does not hold: a fuzzing engine keeps the input that did it.
inline void Require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}
