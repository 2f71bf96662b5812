// The man page, made from the option table.
#pragma once

#include <string>
#include <string_view>

namespace mordhost {

// `page` is the page without the generated parts. Each line "@SYNOPSIS@", "@COMMANDS@", "@OPTIONS@" and "@EXIT STATUS@"
// of it is replaced.
std::string ManPage(std::string_view page);

} // namespace mordhost
