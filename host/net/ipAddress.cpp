#include "net/ipAddress.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace mordhost {

namespace {

constexpr int mappedPrefixBits = 96; // ::ffff:0:0/96 holds the v4 addresses

// A number of nothing but digits of `base`, at most `longest` of them.
template <int base>
std::optional<unsigned> ParseDigits(std::string_view text, size_t longest) {
    unsigned value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, base);
    if (text.empty() || text.size() > longest || error != std::errc() || stop != end || text.front() == '-') {
        return {};
    }
    return value;
}

// Four decimal numbers into four bytes.
bool ParseDotted(std::string_view text, uint8_t* bytes) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int i = 0; i < 4; ++i) {
        if (i > 0 && (at == end || *at++ != '.')) {
            return false;
        }
        const auto [stop, error] = std::from_chars(at, end, bytes[i]);
        if (error != std::errc() || (stop - at > 1 && *at == '0')) {
            return false;
        }
        at = stop;
    }
    return at == end;
}

// The groups of one side of "::", or of the whole address, into `bytes`. Returns how many bytes they fill.
std::optional<size_t> ParseGroups(std::string_view text, bool mayEndDotted, std::array<uint8_t, 16>& bytes) {
    size_t filled = 0;
    while (!text.empty()) {
        const size_t colon = text.find(':');
        const std::string_view group = text.substr(0, colon);
        const bool last = colon == std::string_view::npos;
        if (last && mayEndDotted && group.find('.') != std::string_view::npos) {
            if (filled + 4 > bytes.size() || !ParseDotted(group, &bytes[filled])) {
                return {};
            }
            return filled + 4;
        }
        const auto value = ParseDigits<16>(group, 4);
        if (!value || filled + 2 > bytes.size() || colon + 1 == text.size()) {
            return {};
        }
        bytes[filled++] = static_cast<uint8_t>(*value >> 8U);
        bytes[filled++] = static_cast<uint8_t>(*value & 0xFFU);
        text.remove_prefix(last ? text.size() : colon + 1);
    }
    return filled;
}

bool ParseV6(std::string_view text, std::array<uint8_t, 16>& bytes) {
    const size_t gap = text.find("::");
    if (gap == std::string_view::npos) {
        return ParseGroups(text, true, bytes) == bytes.size();
    }
    std::array<uint8_t, 16> front{};
    std::array<uint8_t, 16> back{};
    const auto frontSize = ParseGroups(text.substr(0, gap), false, front);
    const auto backSize = ParseGroups(text.substr(gap + 2), true, back);
    // The gap stands for one group of zeros at least.
    if (!frontSize || !backSize || *frontSize + *backSize > bytes.size() - 2) {
        return false;
    }
    std::copy_n(front.begin(), *frontSize, bytes.begin());
    std::copy_n(back.begin(), *backSize, bytes.end() - static_cast<std::ptrdiff_t>(*backSize));
    return true;
}

bool IsMapped(const std::array<uint8_t, 16>& bytes) {
    constexpr uint8_t prefix[] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    return std::memcmp(bytes.data(), prefix, sizeof prefix) == 0;
}

IpAddress Unmapped(const IpAddress& address) {
    IpAddress v4;
    std::copy_n(address.bytes.begin() + mappedPrefixBits / 8, 4, v4.bytes.begin());
    return v4;
}

// The address as it is written, a mapped one as v6.
std::optional<IpAddress> ParseAsWritten(std::string_view text) {
    IpAddress address;
    if (text.find(':') == std::string_view::npos) {
        return ParseDotted(text, address.bytes.data()) ? std::optional(address) : std::nullopt;
    }
    address.version = IpAddress::Version::v6;
    return ParseV6(text, address.bytes) ? std::optional(address) : std::nullopt;
}

// Bit `index` of the address, the first being the highest of the first byte.
unsigned Bit(const IpAddress& address, int index) {
    return (static_cast<unsigned>(address.bytes[static_cast<size_t>(index / 8)]) >>
            (7U - static_cast<unsigned>(index % 8))) &
           1U;
}

} // namespace

std::optional<IpAddress> ParseIpAddress(std::string_view text) {
    std::optional<IpAddress> address = ParseAsWritten(text);
    if (address && address->version == IpAddress::Version::v6 && IsMapped(address->bytes)) {
        return Unmapped(*address);
    }
    return address;
}

bool AddressRange::Contains(const IpAddress& address) const {
    if (address.version != first.version) {
        return false;
    }
    for (int i = 0; i < prefixBits; ++i) {
        if (Bit(address, i) != Bit(first, i)) {
            return false;
        }
    }
    return true;
}

std::optional<AddressRange> ParseAddressRange(std::string_view text, std::string& reason) {
    const size_t slash = text.find('/');
    const std::string spelt(text.substr(0, slash));
    const std::optional<IpAddress> address = ParseAsWritten(spelt);
    if (!address) {
        reason = '"' + spelt + "\" is no IP address";
        return {};
    }
    AddressRange range{*address, address->Bits()};
    if (slash != std::string_view::npos) {
        const std::string_view length = text.substr(slash + 1);
        const auto bits = ParseDigits<10>(length, 3);
        if (!bits || static_cast<int>(*bits) > address->Bits()) {
            reason = '"' + std::string(length) + "\" is no prefix length from 0 to " + std::to_string(address->Bits());
            return {};
        }
        range.prefixBits = static_cast<int>(*bits);
    }
    for (int i = range.prefixBits; i < address->Bits(); ++i) {
        if (Bit(*address, i) != 0) {
            reason = spelt + " has bits set behind the first " + std::to_string(range.prefixBits);
            return {};
        }
    }
    if (address->version == IpAddress::Version::v6 && IsMapped(address->bytes) &&
        range.prefixBits >= mappedPrefixBits) {
        range = {Unmapped(*address), range.prefixBits - mappedPrefixBits};
    }
    return range;
}

} // namespace mordhost
