// What the host process has around it: its environment and its working directory.
#pragma once

#include "zelkBase/unicode.h"

namespace siblings {

// The environment variable `name`, empty when it is not set. Elsewhere than on Windows it is UTF-8, and a program that
// runs with more rights than its caller counts every variable as not set.
WideString EnvironmentText(const WideChar* name);

// `path` from the root on; a relative one starts at the working directory. Empty if the system does not tell it.
WideString AbsolutePath(const WideString& path);

// Whether `unit` separates directories, and the character that does.
bool IsSeparator(WideChar unit);
extern const WideChar separator;

} // namespace siblings
