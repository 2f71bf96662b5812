#include "kit/text/utf.h"

namespace kit {

namespace {

constexpr char32_t invalid = 0xFFFD;

// The code point at the start of `text` and how many bytes it takes; U+FFFD and 1 for a byte that begins none.
std::pair<char32_t, size_t> Decode(std::string_view text) {
    const auto byte = [text](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || lead >= 0xF8 || text.size() < length) {
        return {invalid, 1};
    }
    char32_t point = lead & (0xFFU >> (length + 1));
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return {invalid, 1};
        }
        point = point << 6 | (byte(i) & 0x3FU);
    }
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = point >= 0xD800 && point < 0xE000;
    return point < least[length] || surrogate || point > 0x10FFFF ? std::pair{invalid, size_t{1}}
                                                                  : std::pair{point, length};
}

void AppendUtf8(std::string& out, char32_t point) {
    if (point < 0x80) {
        out += static_cast<char>(point);
        return;
    }
    const int trails = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    constexpr unsigned char lead[] = {0, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(lead[trails] | point >> (6 * trails));
    for (int i = trails - 1; i >= 0; --i) {
        out += static_cast<char>(0x80 | (point >> (6 * i) & 0x3F));
    }
}

} // namespace

std::basic_string<WideChar> ToWide(std::string_view narrow) {
    std::basic_string<WideChar> out;
    while (!narrow.empty()) {
        const auto [point, length] = Decode(narrow);
        narrow.remove_prefix(length);
        if (point >= 0x10000) {
            out += static_cast<WideChar>(0xD800 + ((point - 0x10000) >> 10));
            out += static_cast<WideChar>(0xDC00 + ((point - 0x10000) & 0x3FF));
        } else {
            out += static_cast<WideChar>(point);
        }
    }
    return out;
}

std::string ToNarrow(std::basic_string_view<WideChar> wide) {
    std::string out;
    for (size_t i = 0; i < wide.size(); ++i) {
        const char32_t unit = wide[i];
        const bool high = unit >= 0xD800 && unit < 0xDC00;
        const bool pair = high && i + 1 < wide.size() && (wide[i + 1] & 0xFC00) == 0xDC00;
        if (pair) {
            AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (static_cast<char32_t>(wide[++i]) - 0xDC00));
        } else {
            AppendUtf8(out, unit >= 0xD800 && unit < 0xE000 ? invalid : unit);
        }
    }
    return out;
}

} // namespace kit
