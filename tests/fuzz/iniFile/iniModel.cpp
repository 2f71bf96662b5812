#include "fuzz/iniFile/iniModel.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\x1A';
}

std::string WithoutBlanks(std::string text) {
    while (!text.empty() && IsBlank(text.back())) {
        text.pop_back();
    }
    while (!text.empty() && IsBlank(text.front())) {
        text.erase(0, 1);
    }
    return text;
}

std::string Lower(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c | 0x20);
        }
    }
    return text;
}

void PutUtf8(uint32_t point, std::string& out) {
    const auto put = [&out](uint32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (point >= 0x10000) {
        put(0xF0 + point / 0x40000);
        put(0x80 + point / 0x1000 % 0x40);
        put(0x80 + point / 0x40 % 0x40);
        put(0x80 + point % 0x40);
    } else if (point >= 0x800) {
        put(0xE0 + point / 0x1000);
        put(0x80 + point / 0x40 % 0x40);
        put(0x80 + point % 0x40);
    } else if (point >= 0x80) {
        put(0xC0 + point / 0x40);
        put(0x80 + point % 0x40);
    } else {
        put(point);
    }
}

uint32_t UnitAt(const std::string& bytes, size_t at) {
    return static_cast<unsigned char>(bytes[at]) + 256U * static_cast<unsigned char>(bytes[at + 1]);
}

// The value of a digit of `base`, or -1.
int DigitOf(char c, int base) {
    const std::string digits = "0123456789abcdef";
    const size_t value = digits.find(Lower(std::string(1, c)));
    return value == std::string::npos || static_cast<int>(value) >= base ? -1 : static_cast<int>(value);
}

} // namespace

std::string ModelIniText(const std::string& bytes) {
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
        return bytes.substr(3);
    }
    if (bytes.substr(0, 2) != "\xFF\xFE") {
        return bytes;
    }
    std::string out;
    for (size_t at = 2; at + 1 < bytes.size(); at += 2) {
        const uint32_t unit = UnitAt(bytes, at);
        const uint32_t next = at + 3 < bytes.size() ? UnitAt(bytes, at + 2) : 0;
        if (unit < 0xD800 || unit > 0xDFFF) {
            PutUtf8(unit, out);
        } else if (unit < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF) {
            PutUtf8(0x10000 + (unit - 0xD800) * 0x400 + (next - 0xDC00), out);
            at += 2;
        } else {
            PutUtf8(0xFFFD, out);
        }
    }
    return out;
}

std::string ModelIniValue(const std::string& text, const std::string& section, const std::string& key) {
    std::string withLineFeeds = text;
    std::replace(withLineFeeds.begin(), withLineFeeds.end(), '\r', '\n');
    std::istringstream lines(withLineFeeds);
    bool within = false;
    for (std::string raw; std::getline(lines, raw);) {
        const std::string line = WithoutBlanks(raw);
        if (line.substr(0, 1) == ";") {
            continue;
        }
        if (line.substr(0, 1) == "[") {
            if (within) {
                break; // only the first section of that name counts
            }
            const size_t end = line.find_last_of(']');
            within = end != std::string::npos && Lower(WithoutBlanks(line.substr(1, end - 1))) == Lower(section);
            continue;
        }
        const size_t sign = line.find('=');
        if (!within || Lower(WithoutBlanks(line.substr(0, sign))) != Lower(key)) {
            continue;
        }
        if (sign == std::string::npos) {
            return ""; // a key without a value
        }
        std::string value = WithoutBlanks(line.substr(sign + 1));
        for (const char quote : {'"', '\''}) {
            if (value.size() > 1 && value.front() == quote && value.back() == quote) {
                return value.substr(1, value.size() - 2);
            }
        }
        return value;
    }
    return "";
}

uint32_t ModelIniInteger(const std::string& value) {
    std::string rest = value;
    while (!rest.empty() && rest[0] >= 0 && rest[0] <= ' ') {
        rest.erase(0, 1);
    }
    const bool negative = !rest.empty() && rest[0] == '-';
    if (negative || (!rest.empty() && rest[0] == '+')) {
        rest.erase(0, 1);
    }
    const std::string prefix = rest.substr(0, 2);
    const int base = prefix == "0x" ? 16 : prefix == "0o" ? 8 : prefix == "0b" ? 2 : 10;
    uint64_t number = 0;
    for (size_t at = base == 10 ? 0 : 2; at < rest.size() && DigitOf(rest[at], base) >= 0; ++at) {
        number = (number * static_cast<uint64_t>(base) + static_cast<uint64_t>(DigitOf(rest[at], base))) % 0x100000000;
    }
    return static_cast<uint32_t>(negative ? 0x100000000 - number : number);
}
