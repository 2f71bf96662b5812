// IP addresses and address ranges of both versions.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "system/addressText.h"

namespace mordhost {

// A v4 address that is mapped into v6 (::ffff:0:0/96) always becomes the v4 address.
struct IpAddress {
    using Version = IpVersion;

    Version version = Version::v4;
    std::array<uint8_t, 16> bytes{}; // in network order; a v4 address has 4 bytes, followed by zeros

    int Bits() const { return version == Version::v4 ? 32 : 128; }
    bool operator==(const IpAddress&) const = default;
};

// Reads "192.0.2.7", "2001:db8::7" or "::ffff:192.0.2.7". Returns nullopt for any other text, also for one that some
// systems accept: with a zone ("%eth0"), brackets, a port, or a leading zero in a dotted part.
std::optional<IpAddress> ParseIpAddress(std::string_view text);

// The address of 4 or 16 bytes in network order.
IpAddress MakeIpAddress(IpVersion version, const void* bytes);

// The usual text of the address, in lower case.
std::string TextOf(const IpAddress& address);

struct AddressRange {
    IpAddress first;
    int prefixBits = 0; // the number of leading bits that an address in the range shares with `first`

    bool Contains(const IpAddress& address) const;
    bool operator==(const AddressRange&) const = default;
};

// "10.0.0.0/8"; a range of one address is that address.
std::string TextOf(const AddressRange& range);

// Reads "10.0.0.0/8", "2001:db8::/32" or a single address. On failure returns nullopt and writes the reason to
// `reason`.
std::optional<AddressRange> ParseAddressRange(std::string_view text, std::string& reason);

} // namespace mordhost
