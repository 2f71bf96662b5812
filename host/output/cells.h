// The texts of a decision's row.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "decide/decision.h"
#include "policy/policy.h"

namespace mordhost {

enum class Column { time, remoteEnd, localEnd, process, rules, verdict, reason };
constexpr size_t columnCount = 7;

using Cells = std::array<std::string, columnCount>;

// What stands in the columns for a decision under the policy. Nothing in it can steer a terminal.
Cells CellsOf(const Decision& decision, const Policy& policy);

// "127.0.0.1:445", "[::1]:445"; "-" for what is not known.
std::string EndText(const std::optional<std::string>& address, std::optional<uint16_t> port);

// The part of a path behind its last separator of either kind.
std::string FileNameOf(std::string_view path);

// `text` with each control character replaced by a question mark.
std::string Printable(std::string_view text);

// How many columns of a terminal `text` takes, one for each character.
size_t WidthOf(std::string_view text);

} // namespace mordhost
