// The bytes of one fuzzed input, taken from the front. Beyond the end, zeros are taken.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/wideChar.h"

#include <string>

// Whether an input belongs to the share for which a costly step is run: one in `share`, by a hash of its bytes. Changed
// copies of such an input rarely belong to it, so that a fuzzing engine does not gather slow inputs.
inline bool IsOneIn(uint32_t share, const uint8_t* data, size_t size) {
    uint32_t hash = 2166136261U;
    for (size_t i = 0; i < size; ++i) {
        hash = (hash ^ data[i]) * 16777619U;
    }
    return (hash >> 8) % share == 0;
}

class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}

    // The same bytes, which begin again when their end is reached.
    FuzzInput Repeated() const {
        FuzzInput repeated(*this);
        repeated.m_repeated = m_size;
        return repeated;
    }

    bool AtEnd() const { return m_size == 0; }
    size_t Left() const { return m_size; }

    template <typename Value>
    Value Take() {
        Value value{};
        const size_t count = std::min(m_size, sizeof value);
        if (count != 0) {
            std::memcpy(&value, m_data, count);
        }
        Skip(count);
        return value;
    }

    // The next byte is the number of bytes to take; at most `limit`.
    std::string TakeBytes(size_t limit) {
        const size_t count = std::min({size_t{Take<uint8_t>()}, limit, m_size});
        const std::string bytes(reinterpret_cast<const char*>(m_data), count);
        Skip(count);
        return bytes;
    }

    // The next `size` bytes, or fewer at the end, as a separate input.
    FuzzInput TakePart(size_t size) {
        const FuzzInput part(m_data, std::min(size, m_size));
        Skip(part.m_size);
        return part;
    }

    std::basic_string<WideChar> TakeText(size_t limit) {
        const std::string bytes = TakeBytes(limit * sizeof(WideChar));
        std::basic_string<WideChar> text(bytes.size() / sizeof(WideChar), WideChar{});
        if (!text.empty()) {
            std::memcpy(text.data(), bytes.data(), text.size() * sizeof(WideChar));
        }
        return text;
    }

private:
    void Skip(size_t count) {
        m_data += count;
        m_size -= count;
        if (m_size == 0 && m_repeated != 0) {
            m_data -= m_repeated;
            m_size = m_repeated;
        }
    }

    const uint8_t* m_data;
    size_t m_size;
    size_t m_repeated = 0; // the size to begin again with; 0 if the input is not repeated
};
