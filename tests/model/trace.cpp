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
    const auto expected = model.Lines();
    const auto seen = library.Lines();
    const auto left = std::mismatch(expected.begin(), expected.end(), seen.begin(), seen.end()).first;
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
