#include "model/trace.h"

#include <algorithm>

namespace model {

void Trace::Append(Parts parts) {
    for (const std::string_view part : parts) {
        m_text += part;
    }
}

void Trace::Add(Parts parts) {
    Append(parts);
    m_ends.push_back(m_text.size());
}

void Trace::AddLog(int32_t level, std::string_view scope, std::string_view function, Parts message) {
    Append({"log ", Decimal(level), " ", scope, function, ": "});
    Add(message);
}

std::vector<std::string> Trace::Lines() const {
    std::vector<std::string> lines;
    size_t begin = 0;
    for (const size_t end : m_ends) {
        lines.push_back(m_text.substr(begin, end - begin));
        begin = end;
    }
    return lines;
}

void Trace::Clear() {
    m_text.clear();
    m_ends.clear();
}

std::string Shown(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + 2);
    out += '"';
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
    if (model == library) {
        return "";
    }
    constexpr size_t before = 40;
    constexpr size_t after = 4;
    constexpr size_t longest = 3000;
    const auto expected = model.Lines();
    const auto seen = library.Lines();
    const auto left = std::mismatch(expected.begin(), expected.end(), seen.begin(), seen.end()).first;
    const auto first = static_cast<size_t>(left - expected.begin());
    std::string out;
    const auto show = [&out](const char* who, const std::vector<std::string>& lines, size_t begin, size_t end) {
        for (size_t i = begin; i < std::min(end, lines.size()); ++i) {
            const std::string line = Shown(lines[i]);
            out += who + line.substr(0, longest) + (line.size() > longest ? "...\n" : "\n");
        }
    };
    show("  both     ", expected, first > before ? first - before : 0, first);
    show("  model    ", expected, first, first + after);
    show("  library  ", seen, first, first + after);
    return out;
}

} // namespace model
