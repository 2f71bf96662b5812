// The environment and the working directory of the host process.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// Returns the environment variable `name`, or an empty text if it is not set. On Linux its value is UTF-8, and a
// program with more rights than its caller (such as a setuid program) ignores all variables. Must not run while another
// thread changes the environment.
WideString EnvironmentText(const WideChar* name);

// Returns `path` as an absolute path, relative to the working directory. Returns an empty text on failure.
WideString AbsolutePath(const WideString& path);

// Returns whether `unit` separates directories; `separator` is the usual such character.
bool IsSeparator(WideChar unit);
extern const WideChar separator;

} // namespace siblings
