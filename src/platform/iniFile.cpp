#include "platform/iniFile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

#include "platform/unicode.h"

namespace platform {

namespace {

constexpr std::string_view blanks = " \t\v\f\x1A"; // 0x1A marked the end of a DOS text file
constexpr std::string_view lineEnds = "\r\n";

std::string_view Trim(std::string_view text) {
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

char FoldCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameName(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return FoldCase(a) == FoldCase(b); });
}

// Returns 0 to 15, or 16 for a character that is not a digit.
uint32_t DigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<uint32_t>(c - '0');
    }
    const char letter = FoldCase(c);
    return letter >= 'a' && letter <= 'f' ? static_cast<uint32_t>(letter - 'a' + 10) : 16;
}

std::string_view Unquote(std::string_view text) {
    const bool quoted =
        text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.front() == text.back();
    return quoted ? text.substr(1, text.size() - 2) : text;
}

} // namespace

std::string FindIniValue(std::string_view ini, std::string_view section, std::string_view key) {
    bool inSection = false;
    while (!ini.empty()) {
        const size_t end = std::min(ini.find_first_of(lineEnds), ini.size());
        const std::string_view line = Trim(ini.substr(0, end));
        ini.remove_prefix(std::min(end + 1, ini.size()));

        if (line.empty() || line.front() == ';') {
            continue;
        }
        if (line.front() == '[') {
            if (inSection) {
                return {}; // a later section of the same name is not merged
            }
            const size_t close = line.rfind(']');
            inSection = close != std::string_view::npos && SameName(Trim(line.substr(1, close - 1)), section);
            continue;
        }
        const size_t equals = std::min(line.find('='), line.size()); // no "=": the value is empty
        if (inSection && SameName(Trim(line.substr(0, equals)), key)) {
            return std::string(Unquote(Trim(line.substr(std::min(equals + 1, line.size())))));
        }
    }
    return {};
}

uint32_t ParseIniInteger(std::string_view text) {
    while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') {
        text.remove_prefix(1); // FindIniValue keeps blanks inside quotes
    }
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    uint32_t base = 10;
    for (const auto& [prefix, meant] : {std::pair{"0x", 16U}, std::pair{"0o", 8U}, std::pair{"0b", 2U}}) {
        if (text.starts_with(prefix)) {
            text.remove_prefix(2);
            base = meant;
            break;
        }
    }
    uint32_t value = 0;
    for (const char c : text) {
        const uint32_t digit = DigitValue(c);
        if (digit >= base) {
            break;
        }
        value = value * base + digit;
    }
    return negative ? 0U - value : value;
}

std::string ReadIniFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        return bytes.substr(3);
    }
    if (!bytes.starts_with("\xFF\xFE")) {
        return bytes;
    }
    std::u16string units;
    for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        units.push_back(static_cast<char16_t>(low | high << 8));
    }
    return ToUtf8(units);
}

} // namespace platform
