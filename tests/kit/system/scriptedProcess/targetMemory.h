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

    void Clear();

    // From here on each change is remembered, so that UndoChanges can take it back, for as long as the object lives or
    // until it is cleared.
    void RememberChanges() { m_remembers = true; }

    // Takes all remembered changes back. Costs what they cost, and nothing where there were none.
    void UndoChanges();

    // The bytes of each range, by its address.
    using Ranges = std::map<uint64_t, std::vector<char>>;
    const Ranges& Contents() const { return m_ranges; }

private:
    struct Change {
        uint64_t address;         // of what was written over, or of a range that came
        std::vector<char> before; // empty for a range that came or went
        Ranges::node_type gone;   // a range that went
    };

    Ranges m_ranges;
    bool m_remembers = false;
    std::vector<Change> m_changes;
};

} // namespace scripted
