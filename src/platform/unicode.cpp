#include "platform/unicode.h"

namespace platform {

namespace {

constexpr char32_t replacement = U'\uFFFD';

constexpr bool IsHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

constexpr bool IsLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

} // namespace

char32_t TakeCodePoint(std::u16string_view& text) {
    const char16_t unit = text.front();
    text.remove_prefix(1);
    if (IsHighSurrogate(unit) && !text.empty() && IsLowSurrogate(text.front())) {
        const auto high = static_cast<char32_t>(unit - 0xD800);
        const auto low = static_cast<char32_t>(text.front() - 0xDC00);
        text.remove_prefix(1);
        return 0x10000 + (high << 10) + low;
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? replacement : char32_t{unit};
}

size_t EncodeUtf8(char32_t point, char (&bytes)[4]) {
    const auto trail = [point](int shift) { return static_cast<char>(0x80 | (point >> shift & 0x3F)); };
    if (point < 0x80) {
        bytes[0] = static_cast<char>(point);
        return 1;
    }
    if (point < 0x800) {
        bytes[0] = static_cast<char>(0xC0 | point >> 6);
        bytes[1] = trail(0);
        return 2;
    }
    if (point < 0x10000) {
        bytes[0] = static_cast<char>(0xE0 | point >> 12);
        bytes[1] = trail(6);
        bytes[2] = trail(0);
        return 3;
    }
    bytes[0] = static_cast<char>(0xF0 | point >> 18);
    bytes[1] = trail(12);
    bytes[2] = trail(6);
    bytes[3] = trail(0);
    return 4;
}

std::string ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    char bytes[4];
    while (!text.empty()) {
        out.append(bytes, EncodeUtf8(TakeCodePoint(text), bytes));
    }
    return out;
}

} // namespace platform
