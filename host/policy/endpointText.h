// An end of a connection as text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mordhost {

struct Endpoint {
    std::string address; // without brackets
    std::optional<uint16_t> port;
};

// Reads "192.0.2.7", "192.0.2.7:445", "2001:db8::7" or "[2001:db8::7]:445". Returns nullopt for any other text.
std::optional<Endpoint> ParseEndpoint(std::string_view text);

} // namespace mordhost
