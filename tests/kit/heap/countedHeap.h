// The program's heap as a test wants it: what is allocated is counted, and can be made to fail. A program that links
// `countedHeap` has these global operators new and delete.
#pragma once

#include <cstddef>
#include <vector>

namespace kit::allocations {

// Between Begin and End the calling thread's allocations are kept, by size in bytes, in order (64 at most). The one
// with the number `failing`, counted from 0, throws std::bad_alloc; a negative number lets all pass. Keeping them
// allocates nothing.
void Begin(int failing = -1);
std::vector<size_t> End();

// The next allocation of at least `size` bytes, on whatever thread, throws std::bad_alloc, `milliseconds` after it was
// asked for.
void FailNextOf(size_t size, int milliseconds);

// How many blocks the program holds.
long BlocksHeld();

} // namespace kit::allocations
