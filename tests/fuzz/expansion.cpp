#include "fuzz/expansion.h"

#include <algorithm>

#include "fuzz/input.h"

namespace {

constexpr char repetition = 0x1D;
constexpr char numberOfCopy = 0x1E;

void AppendCopy(std::string& text, const std::string& body, unsigned number) {
    for (const char c : body) {
        if (c == numberOfCopy) {
            text += std::to_string(number);
        } else {
            text += c;
        }
    }
}

} // namespace

std::string Expand(const uint8_t* data, size_t size, bool atFullScale) {
    std::string text;
    FuzzInput input(data, size);
    while (!input.AtEnd()) {
        const auto c = input.Take<char>();
        if (c != repetition) {
            text += c;
            continue;
        }
        const unsigned count = input.Take<uint8_t>();
        const std::string body = input.TakeBytes(255);
        const unsigned copies = atFullScale ? 8 * count : count % 8;
        for (unsigned number = 0; number < copies && text.size() < mostExpanded; ++number) {
            AppendCopy(text, body, number);
        }
    }
    return text;
}
