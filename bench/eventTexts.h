// The values of every measured event, except the guids of its rules.
#pragma once

#include <cstdint>

namespace bench {

constexpr auto ruleType = "smb";
constexpr auto remoteIp = "192.0.2.12";
constexpr auto localIp = "198.51.100.7";
constexpr int32_t remotePort = 49152;
constexpr int32_t localPort = 445;
constexpr int64_t driverVersion = 20001;

} // namespace bench
