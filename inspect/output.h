// The forms in which an inspection is written, both in UTF-8.
#pragma once

#include <ostream>

#include "inspection.h"

namespace mordinspect {

// For a person to read.
void WriteText(std::ostream& out, const Inspection& inspection);
void WriteText(std::ostream& out, const std::vector<ProcessData>& processes);

// One JSON object on one line. What could not be had is an object {"unavailable": STEP} with the reason under "status",
// "error", "limit" or "seen". A list that is not whole has such an object under its name in the object "incomplete",
// which is there only for such lists. Addresses are texts such as "0x7ffe0000", since not all numbers of 64 bits are
// safe in JSON.
void WriteJson(std::ostream& out, const Inspection& inspection);
void WriteJson(std::ostream& out, const std::vector<ProcessData>& processes);

// "the loader's data (status 0xC0000005)". Fit for a terminal.
std::string Words(const Refusal& refusal);

// "0xC0000005"
std::string Hex(uint32_t value);

} // namespace mordinspect
