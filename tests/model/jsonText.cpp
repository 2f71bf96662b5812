#include "model/jsonText.h"

#include <algorithm>

namespace model {

std::string JsonText::Space() {
    if (!m_spaced || m_random.Percent(50)) {
        return "";
    }
    return m_random.Pick({" ", "\n", "\r\n", "\t", "  "});
}

std::string JsonText::Escaped(unsigned char byte) {
    static constexpr std::string_view lower = "0123456789abcdef";
    static constexpr std::string_view upper = "0123456789ABCDEF";
    const std::string_view digits = m_random.Percent(50) ? lower : upper;
    return std::string("\\u00") + digits[byte / 16] + digits[byte % 16];
}

std::string JsonText::Quoted(std::string_view bytes) {
    std::string out = "\"";
    for (size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += m_random.Percent(50) ? std::string("\\") + c : Escaped(byte);
        } else if (c == '\n' && m_random.Percent(50)) {
            out += "\\n";
        } else if (byte < 0x20 || (byte < 0x80 && m_random.Percent(6))) {
            out += Escaped(byte);
        } else if (c == '/' && m_random.Percent(50)) {
            out += "\\/";
        } else if (bytes.substr(i, 2) == "\xC3\xA9" && m_random.Percent(30)) {
            out += m_random.Pick({"\\u00e9", "\\u00E9"});
            ++i;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

std::string JsonText::Member(std::string_view name, const std::string& value) {
    std::string out = Quoted(name);
    out += Space();
    out += ":";
    out += Space();
    return out + value;
}

std::string JsonText::GoodNumber() {
    return m_random.Pick({"1", "1", "1", "1", "2", "-1", "2147483647", "-2147483648"});
}

std::string JsonText::Zero() {
    return m_random.Pick({"0", "-0"});
}

std::string JsonText::NumberOutside() {
    return m_random.Pick({"2147483648", "-2147483649", "4294967295", "4294967296", "1.0", "1.5", "1e0", "1E2", "0.0",
                          "-0.0", "0e5", "9223372036854775808", "18446744073709551616", "-9223372036854775809", "1e308",
                          "1e-400", "10000000000"});
}

std::string JsonText::ValueButNot(char kind) {
    for (;;) {
        std::string value;
        switch (m_random.Below(8)) {
        case 0:
            value = "null";
            break;
        case 1:
            value = m_random.Pick({"true", "false"});
            break;
        case 2:
            value = GoodNumber();
            break;
        case 3:
            return NumberOutside();
        case 4:
            value = Quoted(m_random.Pick({"1", "", "mid", "g1"}));
            break;
        case 5:
            value = m_random.Pick({"[]", "[1]", "[\"m1\"]", "[{}]"});
            break;
        case 6:
            value = m_random.Pick({"{}", "{\"m1\":1}", "{\"mid\":\"m1\"}"});
            break;
        default:
            value = Zero();
            break;
        }
        const bool number = value[0] == '-' || (value[0] >= '0' && value[0] <= '9');
        if (number ? kind != '0' : value[0] != kind) {
            return value;
        }
    }
}

std::string JsonText::AnyValue(int depth) {
    if (depth >= 4 || m_random.Percent(60)) {
        return ValueButNot(' ');
    }
    const bool object = m_random.Percent(50);
    std::vector<std::string> items;
    for (uint32_t count = m_random.Below(4); count > 0; --count) {
        std::string value = AnyValue(depth + 1);
        items.push_back(object ? Member(m_random.Pick({"a", "mid", "value", ""}), value) : value);
    }
    return object ? Enclosed(*this, '{', items, '}') : Enclosed(*this, '[', items, ']');
}

std::string Enclosed(JsonText& json, char open, const std::vector<std::string>& items, char close) {
    std::string out(1, open);
    out += json.Space();
    for (size_t i = 0; i < items.size(); ++i) {
        if (i != 0) {
            out += ",";
            out += json.Space();
        }
        out += items[i];
        out += json.Space();
    }
    return out + close;
}

namespace {

// What a strict parser must refuse, or what is at the border.
std::string Fragment(Random& random) {
    if (random.Percent(10)) {
        std::string digits(random.Pick({308U, 310U, 400U}), '0');
        digits[0] = random.Pick({'1', '9'});
        return digits;
    }
    return random.Pick({"01",
                        "-01",
                        "1.",
                        ".5",
                        "-",
                        "+1",
                        "1e",
                        "1e+",
                        "1e309",
                        "-1e309",
                        "0e309",
                        "0.1e309",
                        "0.1e310",
                        "NaN",
                        "Infinity",
                        "-Inf",
                        "tru",
                        "nul",
                        "TRUE",
                        "'a'",
                        "a",
                        "\"\\ud800\"",
                        "\"\\udc00\"",
                        "\"\\ud83d\\ude00\"",
                        "\"\\ud83d\\u0041\"",
                        "\"\\uD83Dx\"",
                        "\"\\u12g4\"",
                        "\"\\x\"",
                        "\"\\u00\"",
                        "\"a\nb\"",
                        "\"\x01\"",
                        "\"\x7F\"",
                        "\"",
                        "[1,]",
                        "{\"a\":1,}",
                        "{a:1}",
                        "[1 2]",
                        "{\"a\" 1}",
                        "{\"a\":}",
                        "{1:1}",
                        "//",
                        "/**/",
                        ",",
                        ":",
                        "]",
                        "}",
                        "[[[[[[[[",
                        "\xEF\xBB\xBF",
                        "\xC2\xA0",
                        "\v"});
}

} // namespace

std::string Spoiled(Random& random, std::string text) {
    const auto place = [&] { return random.Below(static_cast<uint32_t>(text.size()) + 1); };
    switch (random.Below(8)) {
    case 0:
        return text.substr(0, place());
    case 1:
        return text.erase(std::min<size_t>(place(), text.size()), 1);
    case 2: {
        const std::string fragment = Fragment(random);
        return text.insert(place(), fragment);
    }
    case 3:
        return text + Fragment(random);
    case 4:
        return Fragment(random) + text;
    case 5:
        return text + random.Pick({" x", ",", "{}", " null", "}", "]", "1"});
    case 6: // in place of a number
        if (const size_t at = text.find_first_of("0123456789"); at != std::string::npos) {
            return text.replace(at, 1, Fragment(random));
        }
        return Fragment(random);
    default: // a NUL ends the text
        text.insert(place(), 1, '\0');
        return text;
    }
}

std::string BlankText(Random& random) {
    return random.Pick({"", "", " ", "\r\n\t", "  "});
}

} // namespace model
