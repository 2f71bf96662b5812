#include "system/addressText.h"

#include <arpa/inet.h>

namespace mordhost {

namespace {

int FamilyOf(IpVersion version) {
    return version == IpVersion::v4 ? AF_INET : AF_INET6;
}

} // namespace

bool ReadAddress(IpVersion version, const char* text, uint8_t* bytes) {
    return inet_pton(FamilyOf(version), text, bytes) == 1;
}

std::string AddressText(IpVersion version, const uint8_t* bytes) {
    char text[INET6_ADDRSTRLEN] = "";
    inet_ntop(FamilyOf(version), bytes, text, sizeof text);
    return text;
}

} // namespace mordhost
