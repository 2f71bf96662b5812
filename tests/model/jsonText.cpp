#include "model/jsonText.h"

#include <algorithm>

namespace model {

void JsonText::Space() {
    if (m_spaced && m_random.Percent(50)) {
        m_out += m_random.Pick({" ", "\n", "\r\n", "\t", "  "});
    }
}

void JsonText::Escaped(unsigned char byte) {
    const char* const digits = m_random.Percent(50) ? "0123456789abcdef" : "0123456789ABCDEF";
    m_out += "\\u00";
    m_out += digits[byte / 16];
    m_out += digits[byte % 16];
}

void JsonText::Quoted(std::string_view bytes) {
    // A character of a long text is seldom escaped without need.
    const uint32_t needless = bytes.size() < 100 ? 6 : 0;
    m_out += '"';
    for (size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            if (m_random.Percent(50)) {
                m_out += '\\';
                m_out += c;
            } else {
                Escaped(byte);
            }
        } else if (c == '\n' && m_random.Percent(50)) {
            m_out += "\\n";
        } else if (byte < 0x20 || (byte < 0x80 && needless != 0 && m_random.Percent(needless))) {
            Escaped(byte);
        } else if (c == '/' && m_random.Percent(50)) {
            m_out += "\\/";
        } else if (bytes.substr(i, 2) == "\xC3\xA9" && m_random.Percent(30)) {
            m_out += m_random.Pick({"\\u00e9", "\\u00E9"});
            ++i;
        } else {
            m_out += c;
        }
    }
    m_out += '"';
}

void JsonText::Name(std::string_view name) {
    Quoted(name);
    Space();
    m_out += ':';
    Space();
}

void JsonText::GoodNumber() {
    m_out += m_random.Pick({"1", "1", "1", "1", "2", "-1", "2147483647", "-2147483648"});
}

void JsonText::Zero() {
    m_out += m_random.Pick({"0", "-0"});
}

void JsonText::NumberOutside() {
    m_out += m_random.Pick({"2147483648", "-2147483649", "4294967295", "4294967296", "1.0", "1.5", "1e0", "1E2", "0.0",
                            "-0.0", "0e5", "9223372036854775808", "18446744073709551616", "-9223372036854775809",
                            "1e308", "1e-400", "10000000000", "2147483647.0", "-2147483648e0"});
}

void JsonText::ValueButNot(char kind) {
    for (;;) {
        const size_t begin = m_out.size();
        switch (m_random.Below(8)) {
        case 0:
            m_out += "null";
            break;
        case 1:
            m_out += m_random.Pick({"true", "false"});
            break;
        case 2:
            GoodNumber();
            break;
        case 3:
            NumberOutside();
            return;
        case 4:
            Quoted(m_random.Pick({"1", "", "mid", "g1"}));
            break;
        case 5:
            m_out += m_random.Pick({"[]", "[1]", "[\"m1\"]", "[{}]"});
            break;
        case 6:
            m_out += m_random.Pick({"{}", "{\"m1\":1}", "{\"mid\":\"m1\"}"});
            break;
        default:
            Zero();
            break;
        }
        const char first = m_out[begin];
        const bool number = first == '-' || (first >= '0' && first <= '9');
        if (number ? kind != '0' : first != kind) {
            return;
        }
        m_out.resize(begin);
    }
}

void JsonText::AnyValue(int depth) {
    if (depth == 0 && m_random.Percent(2)) {
        return DeepValue();
    }
    if (depth >= 4 || m_random.Percent(60)) {
        ValueButNot(' ');
        return;
    }
    const bool object = m_random.Percent(50);
    Enclosed(object ? '{' : '[', m_random.Below(4), object ? '}' : ']', [this, object, depth](uint32_t) {
        if (object) {
            Name(m_random.Pick({"a", "mid", "value", ""}));
        }
        AnyValue(depth + 1);
    });
}

void JsonText::DeepValue() {
    // Arrays and objects by turns, each with the next one in it.
    const uint32_t depth = m_random.Pick({33U, 33U, 33U, 33U, 100U, 100U, 400U, 1000U});
    const uint32_t turn = m_random.Between(1, 9);
    for (uint32_t level = 0; level < depth; ++level) {
        m_out += level % turn == 0 ? "[" : "{\"a\":";
    }
    ValueButNot(' ');
    for (uint32_t level = depth; level > 0; --level) {
        m_out += (level - 1) % turn == 0 ? ']' : '}';
    }
}

namespace {

// What a strict parser must refuse, or what is at the border.
std::string Fragment(Random& random) {
    if (random.Percent(8)) { // open without end
        return std::string(random.Pick({40U, 200U, 1000U}), '[');
    }
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
