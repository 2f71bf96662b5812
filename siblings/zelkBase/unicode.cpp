#include "zelkBase/unicode.h"

#include <algorithm>

namespace siblings {

namespace {

constexpr char32_t replacement = 0xFFFD;

// What can follow a leading byte: the number of trailing bytes, and the range of the first one. The ranges exclude
// overlong forms (E0, F0), surrogates (ED) and values beyond U+10FFFF (F4).
struct LeadByte {
    int trailing; // 0: not a leading byte
    unsigned char low;
    unsigned char high;
};

constexpr LeadByte DescribeLeadByte(unsigned char byte) {
    if (byte >= 0xC2 && byte <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (byte >= 0xE0 && byte <= 0xEF) {
        return {2, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return {3, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
    }
    return {0, 0, 0};
}

constexpr bool IsHighSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xD800;
}

constexpr bool IsLowSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xDC00;
}

template <typename To, typename From>
std::basic_string<To> Transcode(std::basic_string_view<From> text) {
    std::basic_string<To> out;
    out.reserve(text.size());
    To units[longestCodePoint<To>];
    while (!text.empty()) {
        const size_t before = out.size();
        out.resize(before + text.size());
        const size_t ascii = CopyAscii(text, out.data() + before);
        out.resize(before + ascii);
        text.remove_prefix(ascii);
        if (text.empty()) {
            break;
        }
        out.append(units, PutCodePoint(TakeCodePoint(text), units));
    }
    return out;
}

} // namespace

char32_t TakeCodePoint(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (first < 0x80) {
        return first;
    }
    const LeadByte lead = DescribeLeadByte(first);
    if (lead.trailing == 0) {
        return replacement;
    }
    char32_t point = first & (0x3FU >> lead.trailing);
    unsigned char low = lead.low;
    unsigned char high = lead.high;
    for (int i = 0; i < lead.trailing; ++i) {
        // A byte that does not fit is not consumed: it can start a character.
        const auto byte = text.empty() ? static_cast<unsigned char>(0) : static_cast<unsigned char>(text.front());
        if (byte < low || byte > high) {
            return replacement;
        }
        text.remove_prefix(1);
        point = point << 6 | (byte & 0x3FU);
        low = 0x80;
        high = 0xBF;
    }
    return point;
}

char32_t TakeCodePoint(WideView& text) {
    const char32_t unit = static_cast<char16_t>(text.front());
    text.remove_prefix(1);
    if (IsHighSurrogate(unit) && !text.empty()) {
        const char32_t next = static_cast<char16_t>(text.front());
        if (IsLowSurrogate(next)) {
            text.remove_prefix(1);
            return 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00);
        }
    }
    return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? replacement : unit;
}

size_t PutCodePoint(char32_t point, char (&out)[longestCodePoint<char>]) {
    const auto trail = [point](int shift) { return static_cast<char>(0x80 | (point >> shift & 0x3F)); };
    if (point < 0x80) {
        out[0] = static_cast<char>(point);
        return 1;
    }
    if (point < 0x800) {
        out[0] = static_cast<char>(0xC0 | point >> 6);
        out[1] = trail(0);
        return 2;
    }
    if (point < 0x10000) {
        out[0] = static_cast<char>(0xE0 | point >> 12);
        out[1] = trail(6);
        out[2] = trail(0);
        return 3;
    }
    out[0] = static_cast<char>(0xF0 | point >> 18);
    out[1] = trail(12);
    out[2] = trail(6);
    out[3] = trail(0);
    return 4;
}

size_t PutCodePoint(char32_t point, WideChar (&out)[longestCodePoint<WideChar>]) {
    if (point < 0x10000) {
        out[0] = static_cast<WideChar>(point);
        return 1;
    }
    out[0] = static_cast<WideChar>(0xD800 + ((point - 0x10000) >> 10));
    out[1] = static_cast<WideChar>(0xDC00 + (point & 0x3FF));
    return 2;
}

size_t WriteUtf8(WideView text, char* out) {
    char* end = out;
    char units[longestCodePoint<char>];
    for (;;) {
        const size_t ascii = CopyAscii(text, end);
        end += ascii;
        text.remove_prefix(ascii);
        if (text.empty()) {
            return static_cast<size_t>(end - out);
        }
        end = std::copy_n(units, PutCodePoint(TakeCodePoint(text), units), end);
    }
}

std::string ToUtf8(WideView text) {
    return Transcode<char>(text);
}

WideString ToWide(std::string_view text) {
    return Transcode<WideChar>(text);
}

} // namespace siblings
