// The exit codes of mordhost as texts, for the man page.
#pragma once

#include <array>
#include <string_view>

namespace mordhost {

// By exit code.
constexpr std::array<std::string_view, 6> exitCodeTexts = {
    "Done.",
    "The answer is no: something that the command compares has changed, or something that it checks has failed.",
    "Invalid arguments, or a file that they name cannot be opened, cannot be replaced, or conflicts with another file "
    "of the run.",
    "A document is invalid; the message has file, line and column.",
    "The library or a sibling of it cannot be loaded or does not start; or, without --no-log, ZelkBase has no service "
    "by which its host receives the log records.",
    "The run failed: it was interrupted before its end, a program did not start or become ready, output was lost (the "
    "standard output, a file, or the remaining dots), or the system refused a request, such as that for its "
    "connections.",
};

} // namespace mordhost
