#include "unit/siblings/referenceUtf8.h"

#include <algorithm>
#include <bitset>

namespace siblingTest {

namespace {

struct Range {
    int low;
    int high;
};

struct Row {
    size_t length;
    Range bytes[4];
};

// "Well-Formed UTF-8 Byte Sequences", row for row.
constexpr Row wellFormed[] = {
    {1, {{0x00, 0x7F}}},
    {2, {{0xC2, 0xDF}, {0x80, 0xBF}}},
    {3, {{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}}},
    {3, {{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}},
};

int ByteAt(std::string_view text, size_t index) {
    return static_cast<unsigned char>(text[index]);
}

// The number of bytes at the start of `text` that match the row.
size_t MatchedBytes(const Row& row, std::string_view text) {
    size_t count = 0;
    while (count < std::min(row.length, text.size()) && ByteAt(text, count) >= row.bytes[count].low &&
           ByteAt(text, count) <= row.bytes[count].high) {
        ++count;
    }
    return count;
}

char32_t PointOf(std::string_view sequence) {
    if (sequence.size() == 1) {
        return static_cast<char32_t>(ByteAt(sequence, 0));
    }
    int point = ByteAt(sequence, 0) & (0xFF >> (sequence.size() + 1));
    for (size_t i = 1; i < sequence.size(); ++i) {
        point = point * 64 + (ByteAt(sequence, i) - 0x80);
    }
    return static_cast<char32_t>(point);
}

} // namespace

std::u32string DecodeUtf8ByTable(std::string_view text) {
    std::u32string points;
    while (!text.empty()) {
        size_t longest = 0;
        bool whole = false;
        for (const Row& row : wellFormed) {
            const size_t matched = MatchedBytes(row, text);
            longest = std::max(longest, matched);
            whole = whole || matched == row.length; // the rows exclude each other
        }
        points.push_back(whole ? PointOf(text.substr(0, longest)) : U'\uFFFD');
        text.remove_prefix(std::max<size_t>(longest, 1));
    }
    return points;
}

std::u16string EncodeUtf16(std::u32string_view points) {
    std::u16string units;
    for (const char32_t point : points) {
        if (point > 0xFFFF) {
            units.push_back(static_cast<char16_t>(0xD7C0 + point / 0x400));
            units.push_back(static_cast<char16_t>(0xDC00 + point % 0x400));
        } else {
            units.push_back(static_cast<char16_t>(point));
        }
    }
    return units;
}

std::string EncodeUtf8(std::u32string_view points) {
    std::string bytes;
    for (const char32_t point : points) {
        // The payload as binary digits, cut into groups of six from the right.
        const std::string digits = std::bitset<21>(point).to_string();
        const auto byte = [&digits](const char* lead, size_t first, size_t count) {
            return static_cast<char>(std::bitset<8>(lead + digits.substr(first, count)).to_ulong());
        };
        if (point <= 0x7F) {
            bytes += byte("0", 14, 7);
        } else if (point <= 0x7FF) {
            bytes += {byte("110", 10, 5), byte("10", 15, 6)};
        } else if (point <= 0xFFFF) {
            bytes += {byte("1110", 5, 4), byte("10", 9, 6), byte("10", 15, 6)};
        } else {
            bytes += {byte("11110", 0, 3), byte("10", 3, 6), byte("10", 9, 6), byte("10", 15, 6)};
        }
    }
    return bytes;
}

} // namespace siblingTest
