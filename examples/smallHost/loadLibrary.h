// Loads libraries at run time.
#pragma once

#include <string>

// Loads mordRev.dll or libmordRev.so for the name "mordRev" from `folder`, or from the system's search path if `folder`
// is empty. Returns null on failure and prints the reason to the standard error. The library stays loaded until the
// process ends.
void* LoadFrom(const std::string& folder, const std::string& name);

// Returns the address of an export, or null.
void* FindExport(void* library, const char* name);
