// Conversion between IP addresses and text, by the network library of the system. One body per platform.
//
// The systems accept different spellings: ipAddress.h narrows them to one set before it calls ReadAddress.
#pragma once

#include <cstdint>
#include <string>

namespace mordhost {

enum class IpVersion { v4, v6 };

// Reads `text` and writes 4 or 16 bytes in network order to `bytes`. Returns false for text that is no address.
bool ReadAddress(IpVersion version, const char* text, uint8_t* bytes);

// The text of an address, given as 4 or 16 bytes in network order.
std::string AddressText(IpVersion version, const uint8_t* bytes);

} // namespace mordhost
