// What a piece of code allocates, and what becomes of it when memory runs out.
//
// A program that links this has operator new replaced, and must be linked with malloc, calloc, realloc, free and the
// clock wrapped (see the CMake file). For one thread alone.
#pragma once

#include <cstddef>

enum class AllocationKind {
    None,
    New,
    Malloc, // and realloc
    Calloc,
};

// Counts from its construction on. One at a time.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    size_t Calls() const; // allocations, of any kind
    size_t Bytes() const; // what they asked for
};

// From its construction on the `nth` allocation fails (1 is the first), and with `lasting` every further one too.
class FailingAllocations {
public:
    FailingAllocations(size_t nth, bool lasting);
    ~FailingAllocations() { Stop(); }
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    // Lets all of them succeed again.
    void Stop();

    // What the first one was that failed; None if it did not come to that.
    AllocationKind Failed() const;
};

// How many blocks the program holds, of those that it got in a way that is counted.
long BlocksHeld();

// How often the system was asked for the time, since the program began.
size_t TimeReads();
