// What clang's engine calls. Built once for each target, whose function is MORDREV_FUZZ_TARGET.
#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    MORDREV_FUZZ_TARGET(data, size);
    return 0;
}
