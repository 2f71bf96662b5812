#include "policy/endpointText.h"

#include <charconv>

#include "document/ipAddress.h"

namespace mordhost {

std::optional<Endpoint> ParseEndpoint(std::string_view text) {
    std::string_view address = text;
    std::string_view port;
    bool hasPort = false;
    if (text.starts_with('[')) {
        const size_t end = text.find(']');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        address = text.substr(1, end - 1);
        port = text.substr(end + 1);
        hasPort = !port.empty();
        if (hasPort && port.front() != ':') {
            return std::nullopt;
        }
        port.remove_prefix(hasPort ? 1 : 0);
    } else if (const size_t colon = text.find(':'); colon != std::string_view::npos && colon == text.rfind(':')) {
        address = text.substr(0, colon);
        port = text.substr(colon + 1);
        hasPort = true;
    }
    Endpoint endpoint{std::string(address), std::nullopt};
    if (!ParseIpAddress(address)) {
        return std::nullopt;
    }
    if (hasPort) {
        uint16_t number = 0;
        const auto [stop, error] = std::from_chars(port.data(), port.data() + port.size(), number);
        if (error != std::errc() || stop != port.data() + port.size()) {
            return std::nullopt;
        }
        endpoint.port = number;
    }
    return endpoint;
}

} // namespace mordhost
