// The report of a decision to the host.
#include "model/prettyWriter.h"
#include "model/receiverModel.h"

namespace model {
namespace {

// The part of a path after its last separator of either kind.
std::string FileName(const std::string& path) {
    const size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

std::string Port(int32_t value) {
    return Quoted(std::to_string(static_cast<uint32_t>(value)));
}

std::string Truth(bool value) {
    return value ? "true" : "false";
}

} // namespace

void ReceiverModel::Report(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t reply,
                           bool blockModified) {
    LogTrace("ReportEventHandleRes", "==>enter");
    if (event == nullptr || rules == nullptr || ruleCount == 0 || m_reportSink == nullptr) {
        Took(Branch::ReportNoSink);
        LogError("ReportEventHandleRes", "param error");
        return;
    }
    if (m_defenderMode == 5) {
        Took(Branch::ReportEmergency);
        LogTrace("ReportEventHandleRes", "emergency mode not report");
        return;
    }
    if ((Int32Of(event, "flags") & 0x04) != 0) {
        Took(Branch::ReportDisconnect);
        LogTrace("ReportEventHandleRes", "disconnect event not report");
        return;
    }
    const int32_t pid = Int32Of(event, "pid");
    std::string path;
    if (pid == 4) {
        Took(Branch::ReportSystemProcess);
        path = "System";
    } else {
        // The cases name no other process than the system's and such as do not exist, so that every look-up fails. The
        // reason that the system gives is its own affair.
        Took(Branch::ReportProcessNotFound);
        LogError("GetProcPathByPid",
                 {"Open process failed! pid=", Decimal(static_cast<uint32_t>(pid)), " ,lasterror=N"});
    }

    std::vector<std::string> guids;
    for (uint32_t i = 0; i < ruleCount; ++i) {
        guids.push_back(TextOf(rules[i], "guid"));
    }
    const std::string type = TextOf(rules[0], "type");
    const std::string remoteIp = TextOf(event, "remote_addr_ip");
    const int32_t remotePort = Int32Of(event, "remote_addr_port");
    const std::string localIp = TextOf(event, "local_addr_ip");
    const int32_t localPort = Int32Of(event, "local_addr_port");
    const int64_t driver = Int64Of(event, "net_drv");
    const std::string text = RootObject({
        {"rule_guid", StringArray(guids)},
        {"type", Quoted(type)},
        {"block", Truth(reply == 0)},
        {"block_modified", Truth(blockModified)},
        {"proc_name", Quoted(FileName(path))},
        {"proc_path", Quoted(path)},
        {"send_ip", Quoted(remoteIp)},
        {"send_port", Port(remotePort)},
        {"recv_ip", Quoted(localIp)},
        {"recv_port", Port(localPort)},
        {"send_mid", Quoted("")},
        {"net_drv_version", Quoted(std::to_string(driver))},
        {"protocol", Quoted(type)},
    });
    Took(ruleCount == 1 ? Branch::ReportOfMatchedRule : Branch::ReportOfSeveralRules);
    Took(reply == 0 ? Branch::ReportBlock : Branch::ReportAllow);
    TookIf(blockModified, Branch::ReportBlockModified);
    LogTrace("ReportEventHandleRes", {"ReportEventHandleRes json=", Logged(text)});
    const Within within(*this, Branch::WithinReport);
    m_reportSink->Report(1, text.c_str(), static_cast<uint32_t>(text.size()));
    LogTrace("ReportEventHandleRes", "==>leave");
}

} // namespace model
