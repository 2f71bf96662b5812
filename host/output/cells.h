// The texts of a decision's row.
#pragma once

#include <cstddef>
#include <string>

#include "decide/decision.h"
#include "policy/policy.h"

namespace mordhost {

enum class Column { time, remoteEnd, localEnd, process, rules, verdict, reason };
constexpr size_t columnCount = 7;

// Writes what the column holds for a decision under the policy to the end of `out`, and returns its width. It is cut
// where it would be wider than the column may become. Nothing in it can steer a terminal. Allocates nothing by itself
// but the room in `out`.
size_t AppendCell(std::string& out, Column column, const Decision& decision, const Policy& policy);

} // namespace mordhost
