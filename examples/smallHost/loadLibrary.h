// Loading libraries at run time.
#pragma once

#include <string>

// Loads mordRev.dll or libmordRev.so for the name "mordRev", from `folder`, or from where the system looks when
// `folder` is empty. Null on failure, with the reason on the standard error. The library stays loaded to the end of the
// process.
void* LoadFrom(const std::string& folder, const std::string& name);

// The address of an export, or null.
void* FindExport(void* library, const char* name);
