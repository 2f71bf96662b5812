// Bytes as hexadecimal text.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace mordhost {

// Two digits per byte, in lower case.
inline std::string HexText(std::span<const uint8_t> bytes) {
    constexpr auto digits = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : bytes) {
        text += digits[byte >> 4U];
        text += digits[byte & 0x0FU];
    }
    return text;
}

} // namespace mordhost
