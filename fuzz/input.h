// The bytes of one fuzzed input, taken from the front. Behind the end there are zeros.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/wideChar.h"

#include <string>

class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}

    bool AtEnd() const { return m_size == 0; }

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
