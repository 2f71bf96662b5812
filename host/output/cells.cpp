#include "output/cells.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "output/boundedText.h"
#include "policy/timestamp.h"

namespace mordhost {

namespace {

constexpr std::string_view unknown = "-";

// The maximum widths of the columns. Every address with its port and every verdict fits. File names, rule types and
// machine ids are unbounded and may be truncated.
constexpr std::array<size_t, columnCount> widest = {12, 53, 53, 32, 40, 16, 160};

constexpr size_t Widest(Column column) {
    return widest[static_cast<size_t>(column)];
}

// "127.0.0.1:445", "[::1]:445"; "-" for an unknown part.
void AddEnd(BoundedText& cell, const std::optional<std::string>& address, std::optional<uint16_t> port) {
    const bool brackets = address && address->find(':') != std::string::npos;
    cell.Add(brackets ? "[" : "");
    cell.Add(address ? std::string_view(*address) : unknown);
    cell.Add(brackets ? "]:" : ":");
    cell.Add(port ? std::string_view(std::to_string(*port)) : unknown);
}

// The part of a path after its last separator of either kind.
std::string_view FileNameOf(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1); // the whole path if it has none
}

void AddProcess(BoundedText& cell, const Decision& decision) {
    if (!decision.process.empty()) {
        cell.Add(FileNameOf(decision.process));
    } else if (decision.event.pid) {
        cell.Add("pid ");
        cell.Add(std::to_string(*decision.event.pid));
    } else {
        cell.Add(unknown);
    }
}

// "smb, web x2": the types in the order of the rules. `shown` never overflows, because each type takes at least one
// column.
void AddRules(BoundedText& cell, const std::vector<size_t>& places, const Policy& policy) {
    if (places.empty()) {
        cell.Add(unknown);
    }
    const auto typeOf = [&policy](size_t place) { return std::string_view(policy.rules[place].type); };
    std::array<std::string_view, Widest(Column::rules) + 1> shown;
    size_t count = 0;
    for (auto rule = places.begin(); rule != places.end() && !cell.IsCut(); ++rule) {
        const std::string_view type = typeOf(*rule);
        if (std::find(shown.begin(), shown.begin() + count, type) != shown.begin() + count) {
            continue;
        }
        cell.Add(count == 0 ? "" : ", ");
        cell.Add(type.empty() ? "\"\"" : type);
        shown[count++] = type;
        const auto times = std::count_if(rule, places.end(), [&](size_t place) { return typeOf(place) == type; });
        if (times > 1) {
            cell.Add(" x");
            cell.Add(std::to_string(times));
        }
    }
}

} // namespace

size_t AppendCell(std::string& out, Column column, const Decision& decision, const Policy& policy) {
    const ConnectionEvent& event = decision.event;
    BoundedText cell(out, Widest(column));
    switch (column) {
    case Column::time:
        cell.Add(TimeOfDay(event.time));
        break;
    case Column::remoteEnd:
        AddEnd(cell, event.remoteAddress, event.remotePort);
        break;
    case Column::localEnd:
        AddEnd(cell, event.localAddress, event.localPort);
        break;
    case Column::process:
        AddProcess(cell, decision);
        break;
    case Column::rules:
        AddRules(cell, decision.rules, policy);
        break;
    case Column::verdict:
        cell.Add(VerdictOf(decision));
        break;
    case Column::reason:
        cell.Add(decision.reason.text);
        break;
    }
    return cell.Width();
}

} // namespace mordhost
