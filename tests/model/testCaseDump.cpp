#include "model/testCase.h"

#include "model/trace.h"

namespace model {
namespace {

std::string Number(int64_t value) {
    return std::to_string(value);
}

void DumpRecord(const char* name, const RecordScript& record, const std::string& indent, std::string& out) {
    out += indent + name;
    for (const auto& [key, number] : record.numbers) {
        out += std::string(" ") + key + "=" + Number(number.value) + (number.writes ? "" : "(unwritten)") +
               (number.result == 0 ? "" : "(result " + Number(number.result) + ")");
    }
    for (const auto& [key, text] : record.texts) {
        out += std::string(" ") + key + "=" + Shown(text.bytes);
        if (text.firstResult != 201 || text.firstSize != static_cast<int32_t>(text.bytes.size())) {
            out += "(first " + Number(text.firstResult) + " size " + Number(text.firstSize) + ")";
        }
        out += text.secondResult == 0 ? "" : "(second " + Number(text.secondResult) + ")";
        out += text.secondSize ? "(second size " + Number(*text.secondSize) + ")" : "";
    }
    out += "\n";
}

void DumpOperations(const std::vector<Operation>& operations, const std::string& indent, std::string& out);

void DumpNested(const char* name, const std::vector<Operation>& operations, const std::string& indent,
                std::string& out) {
    if (!operations.empty()) {
        out += indent + name + "\n";
        DumpOperations(operations, indent + "    ", out);
    }
}

void DumpEvent(const EventScript& event, const std::string& indent, std::string& out) {
    out += indent + "reply before " + Number(event.replyBefore) + (event.nullReply ? " null reply" : "") +
           (event.nullEvent ? " null event" : "") + (event.nullRules ? " null rules" : "") +
           (event.noRules ? " no rules" : "") + "\n";
    DumpRecord("event", event.event, indent, out);
    for (const RecordScript& rule : event.rules) {
        DumpRecord("rule", rule, indent, out);
    }
    out += indent + "query " + Number(event.queryResult) + " answer " + (event.answer ? Shown(*event.answer) : "null") +
           " delete " + Number(event.deleteResult) + " free " + Number(event.freeResult) + " report " +
           Number(event.reportResult) + "\n";
    DumpNested("during QueryDot", event.duringQuery, indent, out);
    DumpNested("during FreeResult", event.duringFree, indent, out);
    DumpNested("during DeleteDot", event.duringDelete, indent, out);
    DumpNested("during Report", event.duringReport, indent, out);
}

void DumpOperations(const std::vector<Operation>& operations, const std::string& indent, std::string& out) {
    for (const Operation& operation : operations) {
        out += indent + Title(operation) + "\n";
        for (const EventScript& event : operation.event) {
            DumpEvent(event, indent + "    ", out);
        }
    }
}

std::string Siblings(const SiblingState& siblings) {
    return std::string("siblings") + (siblings.settlesLogging ? "" : " without log settings") +
           (siblings.logs ? "" : " logging off") + (siblings.tellsSettings ? "" : " without an ini file") +
           " machine id " + Shown(siblings.machineId) + " result " + Number(siblings.machineIdResult);
}

} // namespace

const char* KindName(OperationKind kind) {
    switch (kind) {
    case OperationKind::Init:
        return "Init";
    case OperationKind::Uninit:
        return "Uninit";
    case OperationKind::GetProperty:
        return "GetProperty";
    case OperationKind::SetNumber:
        return "SetProperty number";
    case OperationKind::SetText:
        return "SetProperty text";
    case OperationKind::SetNullData:
        return "SetProperty null data";
    case OperationKind::SetZeroSize:
        return "SetProperty size 0";
    case OperationKind::Start:
        return "Start";
    case OperationKind::Stop:
        return "Stop";
    case OperationKind::SetAllowList:
        return "SetAllowList";
    case OperationKind::ClearAllowList:
        return "ClearAllowList";
    case OperationKind::SetReportSink:
        return "SetReportSink";
    case OperationKind::HandleEvent:
        return "HandleEvent";
    case OperationKind::ChangeSiblings:
        return "siblings change";
    }
    return "";
}

std::string Title(const Operation& operation) {
    std::string title = KindName(operation.kind);
    switch (operation.kind) {
    case OperationKind::Init:
    case OperationKind::GetProperty:
    case OperationKind::SetReportSink:
        return title + " " + Number(operation.number);
    case OperationKind::SetNumber:
    case OperationKind::SetZeroSize:
        return title + ", key " + Number(operation.key) + ", " + Number(operation.number);
    case OperationKind::SetText:
        return title + ", key " + Number(operation.key) + ", " + Shown(operation.text);
    case OperationKind::SetNullData:
        return title + ", key " + Number(operation.key);
    case OperationKind::SetAllowList:
        return title + " " + Shown(operation.text);
    case OperationKind::ChangeSiblings:
        return Siblings(operation.siblings);
    default:
        return title;
    }
}

std::string Dump(const TestCase& testCase) {
    std::string out = Siblings(testCase.siblings) + "\n";
    DumpOperations(testCase.operations, "", out);
    return out;
}

} // namespace model
