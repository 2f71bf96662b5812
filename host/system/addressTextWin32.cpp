// The functions behind Winsock's InetPton and InetNtop. Unlike these they need no library of sockets, which the 32-bit
// Wine of the tests cannot load.
#include "system/addressText.h"

#include <winsock2.h>
#include <ws2tcpip.h>
// After the headers above, which it needs.
#include <mstcpip.h>

namespace mordhost {

bool ReadAddress(IpVersion version, const char* text, uint8_t* bytes) {
    USHORT port = 0;
    ULONG scope = 0;
    const LONG status = version == IpVersion::v4
                            ? RtlIpv4StringToAddressExA(text, TRUE, reinterpret_cast<IN_ADDR*>(bytes), &port)
                            : RtlIpv6StringToAddressExA(text, reinterpret_cast<IN6_ADDR*>(bytes), &scope, &port);
    return status == 0;
}

std::string AddressText(IpVersion version, const uint8_t* bytes) {
    char text[INET6_ADDRSTRLEN] = "";
    if (version == IpVersion::v4) {
        RtlIpv4AddressToStringA(reinterpret_cast<const IN_ADDR*>(bytes), text);
    } else {
        RtlIpv6AddressToStringA(reinterpret_cast<const IN6_ADDR*>(bytes), text);
    }
    return text;
}

} // namespace mordhost
