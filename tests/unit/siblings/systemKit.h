// System calls that the tests of the siblings need; one implementation for each platform.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/wideChar.h"

namespace siblingTest {

using WideString = std::basic_string<WideChar>;

// Sets an environment variable of this process; an empty value removes it.
void SetVariable(const std::string& name, const WideString& value);

// Starts the test program `name` once for each element of `arguments`, all at the same time, and waits. Returns whether
// all of them exited with 0.
bool RunPrograms(const std::string& name, const std::vector<std::vector<std::string>>& arguments);

// The id of the machine, read independently of the library. Empty if there is none.
WideString MachineIdOfSystem();

} // namespace siblingTest
