// The environment of this process, for tests.
#pragma once

#include <string>

namespace mordhostTest {

// The variable in UTF-8; empty when it is not set.
std::string EnvironmentText(const char* name);

} // namespace mordhostTest
