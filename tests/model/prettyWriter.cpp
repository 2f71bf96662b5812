#include "model/prettyWriter.h"

namespace model {

std::string Quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\b') {
            out += "\\b";
        } else if (c == '\f') {
            out += "\\f";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (byte < 0x20) {
            static constexpr std::string_view digits = "0123456789ABCDEF";
            out += "\\u00";
            out += digits[byte / 16];
            out += digits[byte % 16];
        } else {
            out += c;
        }
    }
    return out + "\"";
}

std::string StringArray(const std::vector<std::string>& texts) {
    std::string out = "[";
    for (size_t i = 0; i < texts.size(); ++i) {
        out += i == 0 ? "\n        " : ",\n        ";
        out += Quoted(texts[i]);
    }
    return out + "\n    ]";
}

std::string RootObject(const std::vector<WrittenMember>& members) {
    std::string out = "{";
    for (size_t i = 0; i < members.size(); ++i) {
        out += i == 0 ? "\n    " : ",\n    ";
        out += Quoted(members[i].name) + ": " + members[i].value;
    }
    return out + "\n}";
}

} // namespace model
