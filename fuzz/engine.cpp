// What clang's engine calls. Built once for each target, whose function is MORDREV_FUZZ_TARGET.
#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" const char* __asan_default_options();

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    MORDREV_FUZZ_TARGET(data, size);
    return 0;
}

// A record may claim any size: one that is out of all reason finds no memory, as on a real machine. Stacks of
// allocations are kept short, since they cost most of an execution.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=128:malloc_context_size=2:quarantine_size_mb=16";
}
