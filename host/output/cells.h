// The cells of a row of the table.
#pragma once

#include <cstddef>
#include <string>

#include "decide/decision.h"
#include "policy/policy.h"

namespace mordhost {

enum class Column { time, remoteEnd, localEnd, process, rules, verdict, reason };
constexpr size_t columnCount = 7;

// Appends the cell of a column to `out` and returns its width. The cell is truncated to the maximum width of the column
// and contains no control characters. Allocates no memory except for `out`.
size_t AppendCell(std::string& out, Column column, const Decision& decision, const Policy& policy);

} // namespace mordhost
