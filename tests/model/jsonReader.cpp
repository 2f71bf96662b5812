#include "model/jsonReader.h"

#include <cmath>
#include <cstdlib>

namespace model {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

void AppendUtf8(uint32_t codePoint, std::string& out) {
    const auto put = [&out](uint32_t byte) { out.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | codePoint >> 6);
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | codePoint >> 12);
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | codePoint >> 18);
        put(0x80 | (codePoint >> 12 & 0x3F));
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

// Every function returns whether the text was well-formed as far as it read.
class Reader {
public:
    explicit Reader(std::string_view text) : m_text(text) {}

    bool Document(JsonValue& root) {
        SkipWhiteSpace();
        if (!Value(root)) {
            return false;
        }
        SkipWhiteSpace();
        return m_at == m_text.size();
    }

private:
    // The byte at hand, or NUL at the end: the text itself holds none.
    char Peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    bool Take(char wanted) {
        if (Peek() != wanted) {
            return false;
        }
        ++m_at;
        return true;
    }

    bool TakeWord(std::string_view word) {
        if (m_text.substr(m_at, word.size()) != word) {
            return false;
        }
        m_at += word.size();
        return true;
    }

    void SkipWhiteSpace() {
        while (Peek() == ' ' || Peek() == '\t' || Peek() == '\n' || Peek() == '\r') {
            ++m_at;
        }
    }

    bool Value(JsonValue& out) {
        switch (Peek()) {
        case '{':
            return Object(out);
        case '[':
            return Array(out);
        case '"':
            out.kind = JsonValue::Kind::String;
            return String(out.text);
        case 'n':
            out.kind = JsonValue::Kind::Null;
            return TakeWord("null");
        case 't':
            out.kind = JsonValue::Kind::Boolean;
            return TakeWord("true");
        case 'f':
            out.kind = JsonValue::Kind::Boolean;
            return TakeWord("false");
        default:
            return Number(out);
        }
    }

    bool Object(JsonValue& out) {
        out.kind = JsonValue::Kind::Object;
        Take('{');
        SkipWhiteSpace();
        if (Take('}')) {
            return true;
        }
        for (;;) {
            JsonMember& member = out.members.emplace_back();
            if (!String(member.name)) {
                return false;
            }
            SkipWhiteSpace();
            if (!Take(':')) {
                return false;
            }
            SkipWhiteSpace();
            if (!Value(member.value)) {
                return false;
            }
            SkipWhiteSpace();
            if (Take('}')) {
                return true;
            }
            if (!Take(',')) {
                return false;
            }
            SkipWhiteSpace();
        }
    }

    bool Array(JsonValue& out) {
        out.kind = JsonValue::Kind::Array;
        Take('[');
        SkipWhiteSpace();
        if (Take(']')) {
            return true;
        }
        for (;;) {
            if (!Value(out.elements.emplace_back())) {
                return false;
            }
            SkipWhiteSpace();
            if (Take(']')) {
                return true;
            }
            if (!Take(',')) {
                return false;
            }
            SkipWhiteSpace();
        }
    }

    bool String(std::string& out) {
        if (!Take('"')) {
            return false;
        }
        while (!Take('"')) {
            if (static_cast<unsigned char>(Peek()) < 0x20) {
                return false; // a control character, or the end
            }
            if (Take('\\')) {
                if (!Escape(out)) {
                    return false;
                }
            } else {
                out.push_back(m_text[m_at++]);
            }
        }
        return true;
    }

    bool Escape(std::string& out) {
        static constexpr std::string_view letters = "\"\\/bfnrt";
        static constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        if (const size_t place = letters.find(Peek()); Peek() != '\0' && place != std::string_view::npos) {
            ++m_at;
            out.push_back(meanings[place]);
            return true;
        }
        uint32_t unit = 0;
        if (!Take('u') || !FourHexDigits(unit)) {
            return false;
        }
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            uint32_t low = 0;
            if (!TakeWord("\\u") || !FourHexDigits(low) || low < 0xDC00 || low > 0xDFFF) {
                return false;
            }
            unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
        AppendUtf8(unit, out);
        return true;
    }

    bool FourHexDigits(uint32_t& unit) {
        unit = 0;
        for (int digit = 0; digit < 4; ++digit) {
            static constexpr std::string_view digits = "0123456789abcdef";
            const char c = Peek() >= 'A' && Peek() <= 'F' ? static_cast<char>(Peek() - 'A' + 'a') : Peek();
            const size_t value = c == '\0' ? std::string_view::npos : digits.find(c);
            if (value == std::string_view::npos) {
                return false;
            }
            unit = unit * 16 + static_cast<uint32_t>(value);
            ++m_at;
        }
        return true;
    }

    // One digit or more, added to `digits`.
    bool Digits(std::string& digits) {
        if (!IsDigit(Peek())) {
            return false;
        }
        while (IsDigit(Peek())) {
            digits.push_back(m_text[m_at++]);
        }
        return true;
    }

    bool Number(JsonValue& out) {
        out.kind = JsonValue::Kind::Number;
        const size_t begin = m_at;
        const bool negative = Take('-');
        std::string whole;
        if (Take('0')) {
            whole = "0";
        } else if (!Digits(whole)) {
            return false;
        }
        std::string fraction;
        const bool hasFraction = Take('.');
        if (hasFraction && !Digits(fraction)) {
            return false;
        }
        std::string exponent;
        const bool hasExponent = Take('e') || Take('E');
        bool exponentNegative = false;
        if (hasExponent) {
            exponentNegative = Take('-');
            if (!exponentNegative) {
                Take('+');
            }
            if (!Digits(exponent)) {
                return false;
            }
        }
        if (!std::isfinite(std::strtod(whole.c_str(), nullptr))) {
            return false;
        }
        const double highest = 308.0 + static_cast<double>(CountedDigits(whole, fraction));
        if (!exponentNegative && std::strtod(exponent.c_str(), nullptr) > highest) {
            return false;
        }
        out.text = m_text.substr(begin, m_at - begin);
        if (!hasFraction && !hasExponent && whole.size() <= 10) {
            const int64_t value = std::strtoll(whole.c_str(), nullptr, 10) * (negative ? -1 : 1);
            if (value >= INT32_MIN && value <= INT32_MAX) {
                out.integer = static_cast<int32_t>(value);
            }
        }
        return true;
    }

    // How many digits of the fraction the parser keeps: those up to the seventeenth that is significant, the first of
    // the whole part not counted.
    static size_t CountedDigits(const std::string& whole, const std::string& fraction) {
        size_t significant = whole.size() - 1;
        size_t counted = 0;
        for (const char digit : fraction) {
            if (significant >= 17) {
                break;
            }
            ++counted;
            if (significant > 0 || whole != "0" || digit != '0') {
                ++significant;
            }
        }
        return counted;
    }

    std::string_view m_text;
    size_t m_at = 0;
};

} // namespace

const JsonValue* JsonValue::Find(std::string_view name) const {
    for (const JsonMember& member : members) {
        if (member.name == name) {
            return &member.value;
        }
    }
    return nullptr;
}

std::optional<JsonValue> ReadJson(std::string_view text) {
    JsonValue root;
    if (!Reader(text).Document(root)) {
        return std::nullopt;
    }
    return root;
}

} // namespace model
