// The kept inputs of a fuzzed target, without a fuzzing engine.
#pragma once

#include <cstddef>
#include <cstdint>

// Runs every file of fuzz/corpus/`target` through `run`, which ends the process where something does not hold; the
// input that ran is then the last one named on the output. A test fails when there are none.
void ReplayCorpus(const char* target, void (*run)(const uint8_t* data, size_t size));
