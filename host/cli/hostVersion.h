// The version of mordhost, that of the project.
#pragma once

#include <string_view>

namespace mordhost {

constexpr std::string_view hostVersion = MORDHOST_VERSION;

} // namespace mordhost
