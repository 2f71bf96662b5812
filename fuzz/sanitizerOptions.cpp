// How the sanitizer runs in every fuzzer. What stands in ASAN_OPTIONS comes on top.

extern "C" const char* __asan_default_options();

// A record may claim any size: one that is out of all reason finds no memory, as on a real machine. No stacks of
// allocations are kept and the freed memory that is watched is that of many inputs, but no more than the caches hold:
// both cost more than the library does. To see where a finding's memory came from, run it again with
// ASAN_OPTIONS=malloc_context_size=30.
const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=128:malloc_context_size=0:quarantine_size_mb=2:"
           "thread_local_quarantine_size_kb=256";
}
