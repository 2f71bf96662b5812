#include "output/eventText.h"

#include "frame/values.h"
#include "output/cells.h"

namespace mordhost {

namespace {

// "09:54:12.345  192.0.2.12:49152 -> 192.0.2.1:22  sshd  connection"
std::string TextLine(const ConnectionEvent& event) {
    Decision decision;
    decision.event = event;
    decision.process = event.process;
    const Policy policy;
    std::string line;
    AppendCell(line, Column::time, decision, policy);
    line += "  ";
    AppendCell(line, Column::remoteEnd, decision, policy);
    line += " -> ";
    AppendCell(line, Column::localEnd, decision, policy);
    line += "  ";
    AppendCell(line, Column::process, decision, policy);
    const bool ends = (event.flags.value_or(0) & EVENT_FLAG_DISCONNECT) != 0;
    return line + (ends ? "  disconnect\n" : "  connection\n");
}

} // namespace

std::string EventText::Begin() const {
    return m_format == OutputFormat::json ? "[" : "";
}

std::string EventText::Of(const ConnectionEvent& event) {
    if (m_format == OutputFormat::text) {
        return TextLine(event);
    }
    if (m_format == OutputFormat::json) {
        const std::string before = m_isFirst ? "\n" : ",\n";
        m_isFirst = false;
        return before + EventLine(event);
    }
    return EventLine(event) + '\n';
}

std::string EventText::End() const {
    return m_format == OutputFormat::json ? "\n]\n" : "";
}

} // namespace mordhost
