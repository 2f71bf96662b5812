// The options that all commands share which decide.
#pragma once

#include <CLI/CLI.hpp>

#include "app/decisionRun.h"

namespace mordhost {

// Adds the options to `command`; they are stored in `options`, which must outlive the parsing.
void AddRunOptions(CLI::App& command, RunOptions& options);

} // namespace mordhost
