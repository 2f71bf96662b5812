// Random inputs for a target, without a fuzzing engine.
#pragma once

#include "fuzz/targets.h"

// Runs `count` random inputs, half of them kept ones with changes, made from a seed that differs from run to run.
//
// The seed is printed. In the environment, MORDREV_FUZZ_SEED sets it and MORDREV_FUZZ_INPUTS sets the count. If the
// process ends half-way, the input that ran is in the file failedInput-`name` of the working directory; else that file
// is removed.
void RunRandomInputs(const char* name, const char* corpus, FuzzTarget* run, uint64_t count);
