#include "document/ipAddress.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstring>

namespace mordhost {

namespace {

constexpr int mappedPrefixBits = 96; // ::ffff:0:0/96 holds the v4 addresses

bool IsDecimalDigit(char c) {
    return c >= '0' && c <= '9';
}

// The characters of addresses.
constexpr auto isPlain = [] {
    std::array<bool, UCHAR_MAX + 1> table{};
    for (const char c : std::string_view("0123456789abcdefABCDEF:.")) {
        table[static_cast<unsigned char>(c)] = true;
    }
    return table;
}();

// Whether every system reads the text as the same address, or as none. Excludes what only some systems accept: zones,
// brackets, ports, and leading zeros in a dotted part.
bool IsPortable(std::string_view text) {
    bool isDotted = false; // of the characters since the last colon
    bool hasLeadingZero = false;
    bool startsPart = true; // the current character
    bool afterZero = false; // the part consists of a zero so far
    for (const char c : text) {
        if (!isPlain[static_cast<unsigned char>(c)]) {
            return false;
        }
        if (c == ':') {
            isDotted = hasLeadingZero = false;
        }
        isDotted |= c == '.';
        hasLeadingZero |= afterZero && IsDecimalDigit(c);
        afterZero = startsPart && c == '0';
        startsPart = c == ':' || c == '.';
    }
    return !(isDotted && hasLeadingZero);
}

// Reads the address as written: a mapped address stays v6.
std::optional<IpAddress> ParseAsWritten(std::string_view text) {
    char copy[64]; // with a NUL; the longest address has 45 characters
    if (text.size() >= sizeof copy || !IsPortable(text)) {
        return {};
    }
    *std::copy(text.begin(), text.end(), copy) = '\0';
    IpAddress address;
    address.version = text.find(':') == std::string_view::npos ? IpVersion::v4 : IpVersion::v6;
    return ReadAddress(address.version, copy, address.bytes.data()) ? std::optional(address) : std::nullopt;
}

bool IsMapped(const IpAddress& address) {
    constexpr uint8_t prefix[] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    return address.version == IpVersion::v6 && std::memcmp(address.bytes.data(), prefix, sizeof prefix) == 0;
}

IpAddress Unmapped(const IpAddress& address) {
    if (!IsMapped(address)) {
        return address;
    }
    IpAddress v4;
    std::copy_n(address.bytes.begin() + mappedPrefixBits / 8, 4, v4.bytes.begin());
    return v4;
}

// The address with all bits after the first `bits` cleared.
IpAddress Masked(IpAddress address, int bits) {
    const auto whole = static_cast<size_t>(bits / 8);
    if (whole < address.bytes.size()) {
        address.bytes[whole] &= static_cast<uint8_t>(0xFF00U >> static_cast<unsigned>(bits % 8));
        std::fill(address.bytes.begin() + static_cast<std::ptrdiff_t>(whole) + 1, address.bytes.end(), uint8_t{0});
    }
    return address;
}

// Reads a prefix length from 0 to `most`.
std::optional<int> ParsePrefixLength(std::string_view text, int most) {
    constexpr size_t mostDigits = 3;
    int bits = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, bits);
    const bool isNumber =
        error == std::errc() && stop == end && text.size() <= mostDigits && IsDecimalDigit(text.front());
    return isNumber && bits <= most ? std::optional(bits) : std::nullopt;
}

} // namespace

std::optional<IpAddress> ParseIpAddress(std::string_view text) {
    const std::optional<IpAddress> address = ParseAsWritten(text);
    return address ? std::optional(Unmapped(*address)) : std::nullopt;
}

IpAddress MakeIpAddress(IpVersion version, const void* bytes) {
    IpAddress address;
    address.version = version;
    std::memcpy(address.bytes.data(), bytes, static_cast<size_t>(address.Bits() / 8));
    return Unmapped(address);
}

std::string TextOf(const IpAddress& address) {
    return AddressText(address.version, address.bytes.data());
}

std::string TextOf(const AddressRange& range) {
    const std::string first = TextOf(range.first);
    return range.prefixBits == range.first.Bits() ? first : first + '/' + std::to_string(range.prefixBits);
}

bool AddressRange::Contains(const IpAddress& address) const {
    return address.version == first.version && Masked(address, prefixBits) == first;
}

std::optional<AddressRange> ParseAddressRange(std::string_view text, std::string& reason) {
    const size_t slash = text.find('/');
    const std::string written(text.substr(0, slash));
    const std::optional<IpAddress> address = ParseAsWritten(written);
    if (!address) {
        reason = '"' + written + "\" is not an IP address";
        return {};
    }
    AddressRange range{*address, address->Bits()};
    if (slash != std::string_view::npos) {
        const std::string_view length = text.substr(slash + 1);
        const auto bits = ParsePrefixLength(length, address->Bits());
        if (!bits) {
            reason =
                '"' + std::string(length) + "\" is not a prefix length from 0 to " + std::to_string(address->Bits());
            return {};
        }
        range.prefixBits = *bits;
    }
    if (Masked(*address, range.prefixBits) != *address) {
        reason = written + " has bits set after the first " + std::to_string(range.prefixBits);
        return {};
    }
    if (IsMapped(*address) && range.prefixBits >= mappedPrefixBits) {
        range = {Unmapped(*address), range.prefixBits - mappedPrefixBits};
    }
    return range;
}

} // namespace mordhost
