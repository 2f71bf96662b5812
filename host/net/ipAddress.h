// Addresses and ranges of them, of both versions of IP. Own code, since the sockets of Windows need not start for this.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mordhost {

struct IpAddress {
    enum class Version { v4, v6 };

    Version version = Version::v4;
    std::array<uint8_t, 16> bytes{}; // in network order; a v4 address has its four in front and zeros behind

    int Bits() const { return version == Version::v4 ? 32 : 128; }
    bool operator==(const IpAddress&) const = default;
};

// "192.0.2.7" or "2001:db8::7", with a dotted end such as "::ffff:192.0.2.7" too. A v4 address that is mapped into v6
// is that v4 address. Nothing for any other text, one with a zone ("%eth0") or leading zeros in a dotted part included.
std::optional<IpAddress> ParseIpAddress(std::string_view text);

struct AddressRange {
    IpAddress first;
    int prefixBits = 0; // how many bits of an address in the range are those of `first`

    bool Contains(const IpAddress& address) const;
    bool operator==(const AddressRange&) const = default;
};

// "10.0.0.0/8", "2001:db8::/32", or one address. On failure nothing, with the reason in `reason`.
std::optional<AddressRange> ParseAddressRange(std::string_view text, std::string& reason);

} // namespace mordhost
