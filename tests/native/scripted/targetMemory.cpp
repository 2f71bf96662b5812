#include "native/scripted/targetMemory.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>

namespace scripted {

void TargetMemory::Map(uint64_t address, size_t size) {
    if (size == 0) {
        return;
    }
    const auto behind = m_ranges.lower_bound(address);
    const bool meetsNext = behind != m_ranges.end() && behind->first - address < size;
    const bool meetsLast =
        behind != m_ranges.begin() && address - std::prev(behind)->first < std::prev(behind)->second.size();
    if (meetsNext || meetsLast) {
        throw std::logic_error("ranges of target memory overlap");
    }
    m_ranges.emplace(address, std::vector<char>(size));
}

void TargetMemory::Unmap(uint64_t address) {
    if (m_ranges.erase(address) == 0) {
        throw std::logic_error("no range of target memory begins there");
    }
}

void TargetMemory::Write(uint64_t address, const void* bytes, size_t size) {
    auto range = m_ranges.upper_bound(address);
    if (range == m_ranges.begin()) {
        throw std::logic_error("write to target memory that is not mapped");
    }
    --range;
    const uint64_t offset = address - range->first;
    if (offset > range->second.size() || range->second.size() - offset < size) {
        throw std::logic_error("write to target memory that is not mapped");
    }
    std::memcpy(range->second.data() + offset, bytes, size);
}

size_t TargetMemory::Read(uint64_t address, void* destination, size_t size) const {
    size_t done = 0;
    while (done < size) {
        auto range = m_ranges.upper_bound(address);
        if (range == m_ranges.begin()) {
            break;
        }
        --range;
        const uint64_t offset = address - range->first;
        if (offset >= range->second.size()) {
            break;
        }
        const auto within = static_cast<size_t>(offset);
        const size_t part = std::min(size - done, range->second.size() - within);
        std::memcpy(static_cast<char*>(destination) + done, range->second.data() + within, part);
        done += part;
        address += part; // at the end of the address space it goes on at its beginning; nothing is mapped on both sides
        if (address == 0) {
            break;
        }
    }
    return done;
}

} // namespace scripted
