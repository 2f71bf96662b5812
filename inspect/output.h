// The output formats of an inspection, both in UTF-8. Failures of `out` remain in its state.
#pragma once

#include <ostream>

#include "inspection.h"

namespace mordinspect {

// Write the text format, for people.
void WriteText(std::ostream& out, const Inspection& inspection);
void WriteText(std::ostream& out, const std::vector<ProcessData>& processes);

// Write one JSON object on one line. A missing value is an object {"unavailable": STEP} with the reason under "status",
// "error", "limit" or "seen". An incomplete list has such an object under its name in the member "incomplete", which
// exists only if there is such a list. Addresses are texts such as "0x7ffe0000", since JSON numbers are not safe for
// all 64-bit values.
void WriteJson(std::ostream& out, const Inspection& inspection);
void WriteJson(std::ostream& out, const std::vector<ProcessData>& processes);

// Returns a reason in words: "the loader's data (status 0xC0000005)". Control characters are replaced, so that it is
// safe on a terminal.
std::string Words(const Refusal& refusal);

// Returns `value` as "0xC0000005".
std::string Hex(uint32_t value);

} // namespace mordinspect
