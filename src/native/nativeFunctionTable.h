// The NT functions that are reached by name at run time, since a system may lack them.
#pragma once

#include <string>
#include <unordered_map>

#include "platform/platform.h"

// Function name to address in this process; no address in it is null. An insertion of a name that is present keeps the
// old entry.
using NativeFunctionTable = std::unordered_map<std::string, void*>;

// Whether the table was loaded, or is being loaded. A plain byte, set before the load begins: a thread that makes a
// Native while another one loads goes on, and can find names still missing.
extern bool NativeTableLoaded;

// The process-wide table, empty until LoadNativeFunctions.
NativeFunctionTable& GetNativeFunctionTable();

// Enters all names that this system has. Loads no module and reports no name that is missing; all are optional.
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
