#include "output/jsonText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cstring>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "output/cleanText.h"

namespace mordhost {

namespace {

// The bytes that a JSON string contains unchanged.
constexpr auto plain = [] {
    std::array<bool, UCHAR_MAX + 1> table{};
    for (size_t c = 0x20; c < table.size(); ++c) {
        table[c] = c != '"' && c != '\\';
    }
    return table;
}();

constexpr uint64_t InEachByte(uint64_t byte) {
    return byte * 0x0101010101010101U;
}

// Whether one of the eight bytes is a control character, a quote or a backslash.
bool NeedsEscape(uint64_t word) {
    const auto zeros = [](uint64_t w) { return (w - InEachByte(1)) & ~w; }; // the high bits show if a byte is zero
    const uint64_t controls = (word - InEachByte(0x20)) & ~word;
    return ((controls | zeros(word ^ InEachByte('"')) | zeros(word ^ InEachByte('\\'))) & InEachByte(0x80)) != 0;
}

bool IsPlain(std::string_view text) {
    for (uint64_t word = 0; text.size() >= sizeof word; text.remove_prefix(sizeof word)) {
        std::memcpy(&word, text.data(), sizeof word);
        if (NeedsEscape(word)) {
            return false;
        }
    }
    return std::all_of(text.begin(), text.end(), [](char c) { return plain[static_cast<unsigned char>(c)]; });
}

} // namespace

void AppendJsonString(std::string& out, std::string_view text) {
    if (IsPlain(text)) { // the common case
        out += '"';
        out += text;
        out += '"';
        return;
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    out.append(buffer.GetString(), buffer.GetSize());
}

void AppendJsonNumber(std::string& out, int64_t number) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(digits.data(), end);
}

std::string TerminalSafe(std::string_view json) {
    const std::string formed = WellFormed(json);
    std::string safe;
    for (size_t place = 0; place < formed.size(); ++place) {
        const auto byte = static_cast<unsigned char>(formed[place]);
        const bool leads = byte == 0xC2 && static_cast<unsigned char>(formed[place + 1]) < 0xA0;
        if (byte != 0x7F && !leads) {
            safe += formed[place];
            continue;
        }
        constexpr auto digits = "0123456789ABCDEF";
        const unsigned character = leads ? static_cast<unsigned char>(formed[++place]) : byte;
        safe += {'\\', 'u', '0', '0', digits[character >> 4U], digits[character & 15U]};
    }
    return safe;
}

std::string& JsonMembers::Name(std::string_view name) {
    const size_t begin = m_out.size();
    m_out.resize(begin + name.size() + (m_first ? 3 : 4)); // one change of the size, because this runs very often
    char* at = m_out.data() + begin;
    if (!m_first) {
        *at++ = ',';
    }
    m_first = false;
    *at++ = '"';
    at = std::copy(name.begin(), name.end(), at);
    *at++ = '"';
    *at = ':';
    return m_out;
}

void JsonMembers::TextOrNull(std::string_view name, std::string_view value) {
    if (value.empty()) {
        Null(name);
    } else {
        Text(name, value);
    }
}

} // namespace mordhost
