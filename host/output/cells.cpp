#include "output/cells.h"

#include <algorithm>
#include <map>

#include "events/timestamp.h"

namespace mordhost {

namespace {

constexpr auto unknown = "-";

// "smb, web x2": the type words in the order of the rules.
std::string RulesText(const std::vector<size_t>& places, const Policy& policy) {
    std::vector<std::string> types;
    std::map<std::string, size_t> counts;
    for (const size_t place : places) {
        const std::string& type = policy.rules[place].type;
        if (++counts[type] == 1) {
            types.push_back(type);
        }
    }
    std::string text;
    for (const std::string& type : types) {
        text += (text.empty() ? "" : ", ") + (type.empty() ? "\"\"" : type);
        if (counts[type] > 1) {
            text += " x" + std::to_string(counts[type]);
        }
    }
    return text.empty() ? unknown : text;
}

std::string ProcessText(const Decision& decision) {
    if (!decision.process.empty()) {
        return FileNameOf(decision.process);
    }
    return decision.event.pid ? "pid " + std::to_string(*decision.event.pid) : unknown;
}

} // namespace

std::string EndText(const std::optional<std::string>& address, std::optional<uint16_t> port) {
    std::string text = address.value_or(unknown);
    if (text.find(':') != std::string::npos) {
        text = '[' + text + ']';
    }
    return text + ':' + (port ? std::to_string(*port) : unknown);
}

std::string FileNameOf(std::string_view path) {
    const size_t separator = path.find_last_of("/\\");
    return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string Printable(std::string_view text) {
    std::string printable(text);
    for (size_t i = 0; i < printable.size(); ++i) {
        const auto byte = static_cast<unsigned char>(printable[i]);
        // U+0080 to U+009F, two bytes in UTF-8, steer some terminals too.
        const bool secondSet =
            byte == 0xC2 && i + 1 < printable.size() && static_cast<unsigned char>(printable[i + 1]) < 0xA0;
        if (secondSet) {
            printable.replace(i, 2, "?");
        } else if (byte < 0x20 || byte == 0x7F) {
            printable[i] = '?';
        }
    }
    return printable;
}

size_t WidthOf(std::string_view text) {
    return static_cast<size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

Cells CellsOf(const Decision& decision, const Policy& policy) {
    const ConnectionEvent& event = decision.event;
    Cells cells{TimeOfDay(event.time),
                EndText(event.remoteAddress, event.remotePort),
                EndText(event.localAddress, event.localPort),
                ProcessText(decision),
                RulesText(decision.rules, policy),
                VerdictOf(decision),
                decision.reason};
    std::transform(cells.begin(), cells.end(), cells.begin(), Printable);
    return cells;
}

} // namespace mordhost
