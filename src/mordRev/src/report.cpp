// The report of one decision.
#include "logging/logMacros.h"
#include "mordRev/src/json.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/procPathText.h"
#include "mordRev/src/recordReader.h"
#include "mordRev/src/ruleGuids.h"

namespace {

constexpr uint32_t systemPid = 4;
constexpr int32_t reportKind = 1;

void WriteMember(JsonText::Writer& writer, std::string_view key, std::string_view text) {
    writer.Text(key);
    writer.Text(text);
}

void WriteFlag(JsonText::Writer& writer, std::string_view key, bool value) {
    writer.Text(key);
    writer.Bool(value);
}

} // namespace

void CMordRecv::ReportEventHandleRes(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t reply,
                                     bool blockModified) {
    LOG_TRACE(WIDE("==>enter"));
    if (event == nullptr || rules == nullptr || ruleCount == 0 ||
        m_reportSink.load(std::memory_order_relaxed) == nullptr) {
        LOG_ERROR(WIDE("param error"));
        return;
    }
    if (m_defenderMode.load(std::memory_order_relaxed) == MODE_EMERGENCY) {
        LOG_TRACE(WIDE("emergency mode not report"));
        return;
    }
    if ((ReadInt32(event, "flags") & EVENT_FLAG_DISCONNECT) != 0) {
        LOG_TRACE(WIDE("disconnect event not report"));
        return;
    }
    const uint32_t pid = ReadInt32(event, "pid");
    std::string procPath;
    if (pid == systemPid) {
        procPath = "System";
    } else {
        GetProcPathByPid(pid, &procPath); // the path is empty on failure; the report is still sent
    }
    const std::string procName = ExtractProcName(procPath);

    JsonText report;
    JsonText::Writer& writer = report.Out();
    writer.StartObject();
    writer.Text("rule_guid");
    WriteRuleGuids(writer, rules, ruleCount);
    const RecordText type(rules[0], "type");
    WriteMember(writer, "type", type.View());
    WriteFlag(writer, "block", reply == REPLY_BLOCK);
    WriteFlag(writer, "block_modified", blockModified);
    WriteMember(writer, "proc_name", procName);
    WriteMember(writer, "proc_path", procPath);
    // The remote end sends and this side receives: this is the receiving end.
    RecordText address(event, "remote_addr_ip");
    WriteMember(writer, "send_ip", address.View());
    WriteMember(writer, "send_port", std::to_string(ReadInt32(event, "remote_addr_port")));
    address.Read(event, "local_addr_ip");
    WriteMember(writer, "recv_ip", address.View());
    WriteMember(writer, "recv_port", std::to_string(ReadInt32(event, "local_addr_port")));
    WriteMember(writer, "send_mid", ""); // always empty
    WriteMember(writer, "net_drv_version", std::to_string(ReadInt64(event, "net_drv")));
    WriteMember(writer, "protocol", type.View()); // repeats "type" by design of the format
    writer.EndObject();

    LOG_TRACE(WIDE("ReportEventHandleRes json=") << report.Get());
    // Loaded once: a record or another thread can have replaced the sink with null since the test above.
    if (IReportSink* const target = m_reportSink.load(std::memory_order_acquire)) {
        target->Report(reportKind, report.Get(), static_cast<uint32_t>(report.Size()));
    }
    LOG_TRACE(WIDE("==>leave"));
}
