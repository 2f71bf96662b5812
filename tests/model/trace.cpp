#include "model/trace.h"

#include <algorithm>

namespace model {

void Trace::AddLog(int32_t level, std::string_view function, std::string_view message) {
    Add("log " + std::to_string(level) + " " + std::string(function) + ": " + std::string(message));
}

std::string Shown(std::string_view bytes) {
    std::string out = "\"";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F && c != '\\' && c != '"') {
            out += c;
        } else {
            static constexpr std::string_view digits = "0123456789abcdef";
            out += "\\x";
            out += digits[byte / 16];
            out += digits[byte % 16];
        }
    }
    return out + "\"";
}

std::string Shown(const char* text) {
    return text == nullptr ? "null" : Shown(std::string_view(text));
}

std::string Difference(const Trace& model, const Trace& library) {
    const auto& expected = model.Lines();
    const auto& seen = library.Lines();
    const auto [left, right] = std::mismatch(expected.begin(), expected.end(), seen.begin(), seen.end());
    if (left == expected.end() && right == seen.end()) {
        return "";
    }
    const auto first = static_cast<size_t>(left - expected.begin());
    std::string out;
    for (size_t i = first > 12 ? first - 12 : 0; i < first; ++i) {
        out += "  both     " + Shown(expected[i]) + "\n";
    }
    for (size_t i = first; i < std::min(first + 4, expected.size()); ++i) {
        out += "  model    " + Shown(expected[i]) + "\n";
    }
    for (size_t i = first; i < std::min(first + 4, seen.size()); ++i) {
        out += "  library  " + Shown(seen[i]) + "\n";
    }
    return out;
}

} // namespace model
