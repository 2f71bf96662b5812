#include "kit/system/scriptedProcess/targetMemory.h"

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
    if (m_remembers) {
        m_changes.push_back({address, {}, {}});
    }
}

void TargetMemory::Unmap(uint64_t address) {
    auto range = m_ranges.extract(address);
    if (range.empty()) {
        throw std::logic_error("no range of target memory begins there");
    }
    if (m_remembers) {
        m_changes.push_back({address, {}, std::move(range)});
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
    if (size == 0) {
        return;
    }
    char* const place = range->second.data() + offset;
    if (m_remembers) {
        m_changes.push_back({address, {place, place + size}, {}});
    }
    std::memcpy(place, bytes, size);
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

void TargetMemory::Clear() {
    m_ranges.clear();
    m_changes.clear();
    m_remembers = false;
}

void TargetMemory::UndoChanges() {
    m_remembers = false;
    for (; !m_changes.empty(); m_changes.pop_back()) {
        Change& change = m_changes.back();
        if (!change.gone.empty()) {
            m_ranges.insert(std::move(change.gone));
        } else if (change.before.empty()) {
            m_ranges.erase(change.address);
        } else {
            Write(change.address, change.before.data(), change.before.size());
        }
    }
    m_remembers = true;
}

} // namespace scripted
