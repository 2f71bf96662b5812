// The services of the siblings, reached through two relay libraries.
#pragma once

#include <cstdint>
#include <filesystem>

#include "model/siblingState.h"
#include "model/trace.h"

namespace model {

// The LogLevel of the ini file.
constexpr uint32_t logLevel = 7;

// Loads the relays and creates the directory of the ini file. Only the first call has an effect.
void LoadSiblings();

// A temporary directory of this process.
std::filesystem::path ScratchFolder();

// Call it before a library is loaded. The services answer by `state` and write the receiver's requests into `trace`:
// log records, the start of a logger, the machine id, each conversion to narrow text. A wrong argument adds a line too,
// and so does a conversion to wide text without a logger. Both pointers must stay valid until the library is unloaded.
//
// The converter maps each byte to one unit and back, so a record shows which bytes the receiver converted.
void UseSiblings(const SiblingState* state, Trace* trace);

} // namespace model
