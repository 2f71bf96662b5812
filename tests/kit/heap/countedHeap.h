// Counts what a piece of code allocates, and lets memory run out.
//
// A program that links `countedHeap` has the global operators new and delete replaced, and malloc, calloc, realloc and
// free wrapped in all of its own code; shared libraries keep the system's functions. Counters and failures watch the
// thread that made them; HeapUse watches the whole program. One of each may exist at a time. They allocate nothing
// themselves.
#pragma once

#include <cstddef>
#include <vector>

namespace kit {

enum class AllocationKind {
    None,
    New,
    Malloc, // and realloc
    Calloc,
};

// Counts the calling thread's allocations from its construction to its destruction or to Sizes.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    size_t Calls() const; // of any kind
    size_t Bytes() const; // requested

    // Ends the counting and returns the sizes that operator new was asked for, in order, 64 at most.
    std::vector<size_t> Sizes();
};

// Measures the memory of the whole program, in the bytes that the allocator reserves for blocks.
class HeapUse {
public:
    HeapUse();
    HeapUse(const HeapUse&) = delete;
    HeapUse& operator=(const HeapUse&) = delete;

    // The bytes held now, less those at the construction.
    long long Bytes() const;

    // The most bytes held since the construction, less those at it. A block that changes its size counts twice
    // meanwhile.
    long long MostBytes() const;

private:
    long long m_before;
};

// From its construction on, the calling thread's `nth` allocation fails (1 is the first), and with `lasting` every
// further one as well. A failing operator new throws std::bad_alloc; the other functions return null.
class FailingAllocations {
public:
    explicit FailingAllocations(size_t nth, bool lasting = false);
    ~FailingAllocations() { Stop(); }
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    // Lets all allocations succeed again.
    void Stop();

    // The kind of the first allocation that failed; None if all succeeded.
    AllocationKind Failed() const;
};

// The same for operator new alone: the runtime of some systems allocates within the code under test, and not by new.
class FailingNew : public FailingAllocations {
public:
    explicit FailingNew(size_t nth);
};

// The next allocation of at least `size` bytes, on any thread, fails `milliseconds` after it was requested.
void FailNextOf(size_t size, int milliseconds);

// The number of blocks that the program holds, of those that it allocated in a way that is counted.
long BlocksHeld();

// The same of operator new alone.
long NewBlocksHeld();

} // namespace kit
