// The seed of everything random in a test run.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

namespace kit {

// MORDREV_SEED of the environment, which `make test` sets, or a seed that this process draws. The first call prints it:
// the output of a test that fails has it, and MORDREV_SEED repeats the run. Ends the process if MORDREV_SEED is not a
// number.
inline uint64_t RunSeed() {
    static const uint64_t seed = [] {
        uint64_t value = std::random_device()();
        if (const char* const text = std::getenv("MORDREV_SEED"); text != nullptr && *text != '\0') {
            char* end = nullptr;
            value = std::strtoull(text, &end, 10);
            if (*end != '\0') {
                std::cerr << "MORDREV_SEED is not a number: " << text << "\n";
                std::exit(2);
            }
        }
        std::cout << "MORDREV_SEED=" << value << std::endl;
        return value;
    }();
    return seed;
}

} // namespace kit
