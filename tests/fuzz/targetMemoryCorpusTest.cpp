// The target of an inspected process's memory, without a fuzzing engine. Compiled for each width of caller.
//
//     MORDREV_FUZZ_INPUTS=1000000 build/linux-asan/tests/targetMemoryCorpus32Test
#include <gtest/gtest.h>

#include "fuzz/corpus.h"
#include "fuzz/randomInputs.h"

namespace {

TEST(TargetMemoryCorpus, KeptInputsPass) {
    ReplayCorpus("targetMemory", FuzzTargetMemory);
}

TEST(TargetMemoryCorpus, RandomInputsPass) {
    RunRandomInputs(MORDREV_FUZZ_TARGET_NAME, "targetMemory", FuzzTargetMemory, 5000);
}

} // namespace
