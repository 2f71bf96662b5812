// The memory of a made-up process: ranges of addresses, of which the rest cannot be read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace scripted {

class TargetMemory {
public:
    // Makes `size` bytes at `address` readable, all zero. The range must touch none that is there.
    void Map(uint64_t address, size_t size);

    // Takes the range that begins at `address` away.
    void Unmap(uint64_t address);

    // Stores bytes in a mapped range; throws std::logic_error where nothing is mapped.
    void Write(uint64_t address, const void* bytes, size_t size);

    template <typename Value>
    void Put(uint64_t address, const Value& value) {
        Write(address, &value, sizeof value);
    }

    // Copies to `destination` what can be read of `size` bytes at `address` without a gap, and tells how many bytes
    // that are. A read may cross ranges that adjoin.
    size_t Read(uint64_t address, void* destination, size_t size) const;

    void Clear() { m_ranges.clear(); }

private:
    std::map<uint64_t, std::vector<char>> m_ranges;
};

} // namespace scripted
