#include "model/operations.h"

namespace model {
namespace {

Operation Plain(OperationKind kind, uint32_t key = 0, uint32_t number = 0, std::string text = "") {
    Operation operation;
    operation.kind = kind;
    operation.key = key;
    operation.number = number;
    operation.text = std::move(text);
    return operation;
}

} // namespace

TextScript DeliveredText(const std::string& value) {
    TextScript text;
    text.bytes = value + '\0';
    text.firstSize = static_cast<int32_t>(text.bytes.size());
    return text;
}

RecordScript RuleRecord(const std::string& guid, const std::string& type) {
    RecordScript rule;
    rule.texts["guid"] = DeliveredText(guid);
    rule.texts["type"] = DeliveredText(type);
    return rule;
}

EventScript EventOf(int32_t flags, std::vector<RecordScript> rules, std::string answer) {
    EventScript event;
    event.event.numbers["flags"].value = flags;
    event.event.numbers["pid"].value = 4;
    event.rules = std::move(rules);
    event.answer = std::move(answer);
    return event;
}

Operation InitOf(uint32_t host) {
    return Plain(OperationKind::Init, 0, host);
}
Operation UninitOf() {
    return Plain(OperationKind::Uninit);
}
Operation StartOf() {
    return Plain(OperationKind::Start);
}
Operation StopOf() {
    return Plain(OperationKind::Stop);
}
Operation SinkOf(uint32_t sink) {
    return Plain(OperationKind::SetReportSink, 0, sink);
}
Operation NumberOf(uint32_t key, uint32_t value) {
    return Plain(OperationKind::SetNumber, key, value);
}
Operation TextOf(uint32_t key, std::string value) {
    return Plain(OperationKind::SetText, key, 0, std::move(value));
}
Operation NullDataOf(uint32_t key) {
    return Plain(OperationKind::SetNullData, key);
}
Operation ZeroSizeOf(uint32_t key, uint32_t value) {
    return Plain(OperationKind::SetZeroSize, key, value);
}
Operation ReadingOf(uint32_t arguments) {
    return Plain(OperationKind::GetProperty, 0, arguments);
}
Operation AllowListOf(std::string document) {
    return Plain(OperationKind::SetAllowList, 0, 0, std::move(document));
}
Operation ClearingOf() {
    return Plain(OperationKind::ClearAllowList);
}
Operation HandlingOf(EventScript event) {
    Operation operation = Plain(OperationKind::HandleEvent);
    operation.event.push_back(std::move(event));
    return operation;
}
Operation SiblingsOf(SiblingState siblings) {
    Operation operation = Plain(OperationKind::ChangeSiblings);
    operation.siblings = std::move(siblings);
    return operation;
}

} // namespace model
