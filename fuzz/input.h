// The bytes of one fuzzed input, taken from the front. Behind the end there are zeros.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/wideChar.h"

#include <string>

// Whether an input is of the share that a costly step is taken for: one in `share`, by its bytes alone and evenly
// spread, so that an engine does not gather inputs for which it is.
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

    // Up to `limit` bytes, as many as the next byte tells.
    std::string TakeBytes(size_t limit) {
        const size_t count = std::min({size_t{Take<uint8_t>()}, limit, m_size});
        const std::string bytes(reinterpret_cast<const char*>(m_data), count);
        Skip(count);
        return bytes;
    }

    // The next `size` bytes, as far as there are so many, as an input of their own.
    FuzzInput TakePart(size_t size) {
        const FuzzInput part(m_data, std::min(size, m_size));
        Skip(part.m_size);
        return part;
    }

    std::string TakeRest() {
        const std::string bytes(reinterpret_cast<const char*>(m_data), m_size);
        Skip(m_size);
        return bytes;
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
    }

    const uint8_t* m_data;
    size_t m_size;
};
