// The NT functions that are reached by name at run time, since a system may lack them.
#pragma once

#include <string>
#include <unordered_map>

#include "platform/platform.h"

// Function name to address in this process; no address in it is null. An insertion of a name that is present keeps the
// old entry.
using NativeFunctionTable = std::unordered_map<std::string, void*>;

// Whether the table was loaded, or is being loaded. Set before the load begins, and never cleared: a load that runs out
// of memory half-way is not repeated. LoadNativeFunctionsOnce alone reads and writes it, under its guard.
extern bool NativeTableLoaded;

// The process-wide table, empty until LoadNativeFunctions.
NativeFunctionTable& GetNativeFunctionTable();

// Loads the table at the first call in the process. Any thread may call; a thread that comes while another one loads
// waits until the table is complete. Every Native does this before it reads the table.
void LoadNativeFunctionsOnce();

// Enters all names that this system has. For one thread, while no other reads the table. Loads no module and reports no
// name that is missing; all are optional.
void LoadNativeFunctions();

// The address that `module` exports under `name`, entered into `table`; null, with the table left alone, when there is
// none.
void* LoadNativeFunction(NativeFunctionTable& table, const char* name, platform::ModuleHandle module);

// The function of that name in the process-wide table, or null: the function is missing.
template <typename Function>
Function FindNativeFunction(const char* name) {
    const NativeFunctionTable& table = GetNativeFunctionTable();
    const auto entry = table.find(name);
    return entry == table.end() ? nullptr : reinterpret_cast<Function>(entry->second);
}
