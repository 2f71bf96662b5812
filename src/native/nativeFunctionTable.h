// The NT functions that are looked up by name at run time, since a system may lack them.
#pragma once

#include <string>
#include <unordered_map>

#include "platform/platform.h"

// Maps a function name to its address in this process, which is never null. Inserting a name again keeps the old entry.
using NativeFunctionTable = std::unordered_map<std::string, void*>;

// Whether a load of the table has begun. Set before the load and never cleared: a load that runs out of memory is not
// repeated, and the table keeps the entries loaded so far. Only LoadNativeFunctionsOnce reads and writes it, under its
// spin lock.
extern bool NativeTableLoaded;

// Returns the process-wide table, which is empty until LoadNativeFunctions. Reading it needs no lock after the load.
NativeFunctionTable& GetNativeFunctionTable();

// Loads the table at the first call in the process. Any thread may call; concurrent callers wait until the load ends.
// Every Native calls this before it reads the table. Throws std::bad_alloc.
void LoadNativeFunctionsOnce();

// Enters every function that this system has. No other thread may read the table meanwhile. Loads no module. All
// functions are optional: a missing one is neither reported nor logged.
void LoadNativeFunctions();

// Looks `name` up in `module` and enters its address into `table`. Returns the address; returns null and leaves the
// table unchanged if the module does not export it.
void* LoadNativeFunction(NativeFunctionTable& table, const char* name, platform::ModuleHandle module);

// Returns the function `name` of the process-wide table, or null if the system lacks it.
template <typename Function>
Function FindNativeFunction(const char* name) {
    const NativeFunctionTable& table = GetNativeFunctionTable();
    const auto entry = table.find(name);
    return entry == table.end() ? nullptr : reinterpret_cast<Function>(entry->second);
}
