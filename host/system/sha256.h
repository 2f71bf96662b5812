// SHA-256 by the system's or OpenSSL's implementation. One body per platform.
#pragma once

#include <string>
#include <string_view>

namespace mordhost {

// The SHA-256 of the bytes, as 64 hexadecimal digits in lower case. Throws RunError if the implementation fails.
std::string Sha256Of(std::string_view bytes);

} // namespace mordhost
