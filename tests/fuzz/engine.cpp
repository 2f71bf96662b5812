// The entry point for clang's fuzzing engine. Compiled once for each target, whose function is MORDREV_FUZZ_TARGET.
#include "fuzz/inputRun.h"
#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    RunInput(MORDREV_FUZZ_TARGET, data, size);
    return 0;
}
