// Plain conversions for tests. Invalid input becomes U+FFFD, one for each byte or unit that cannot be used.
#pragma once

#include <string>
#include <string_view>

#include "platform/wideChar.h"

namespace kit {

std::basic_string<WideChar> ToWide(std::string_view narrow);
std::string ToNarrow(std::basic_string_view<WideChar> wide);

} // namespace kit
