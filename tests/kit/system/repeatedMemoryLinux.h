// A long stretch of address space that shows the same few pages over and over: a text of some GiB in little memory.
#pragma once

#include <cstddef>

namespace kit {

class RepeatedMemory {
public:
    // At least `size` bytes, all 0. A write changes the byte at every multiple of `period` from there.
    static constexpr size_t period = size_t{1} << 22;

    explicit RepeatedMemory(size_t size);
    ~RepeatedMemory();
    RepeatedMemory(const RepeatedMemory&) = delete;
    RepeatedMemory& operator=(const RepeatedMemory&) = delete;

    void* Data() const { return m_area; }

    // Replaces the page at `offset`, a multiple of the page size, by a separate one of zeros.
    void Separate(size_t offset);

private:
    void* m_area;
    size_t m_size;
};

} // namespace kit
