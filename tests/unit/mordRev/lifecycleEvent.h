// One event with one rule, for tests of what the object's state makes of events.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "kit/host/receiverFixture.h"

class LifecycleEventFixture : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        event.Int32("flags", 0).Int32("pid", 4);
        rule = kit::MakeRule("G", "tcp");
        host.answer = R"({"G":{"value":1,"mid":{"A":1}}})";
    }

    // The rule's machine id stands in the allow list.
    void AllowTheMachine() { ASSERT_TRUE(receiver->SetAllowList(R"({"mid_list":[{"mid":"A","protocol":["tcp"]}]})")); }

    bool SetAction(const std::string& document) {
        std::string text = document;
        return receiver->SetProperty(PROP_ACTION_JSON, text.data(), static_cast<uint32_t>(text.size()));
    }

    // Hands the event in; `result` is what HandleEvent returned.
    uint32_t Handle() {
        IEventRecord* rules[] = {&rule};
        uint32_t reply = 77;
        result = receiver->HandleEvent(&event, rules, 1, &reply);
        return reply;
    }

    // The host's and the sink's calls since the last one, by their names.
    std::vector<std::string> TakeCallNames() {
        std::vector<std::string> names;
        for (const std::string& call : calls.Take()) {
            names.push_back(call.substr(0, call.find('(')));
        }
        return names;
    }

    // The records at ERROR since the last call.
    std::vector<std::string> TakeErrors() {
        std::vector<std::string> records = TakeRecords();
        std::erase_if(records, [](const std::string& record) { return !record.starts_with("TIME [ERROR]"); });
        return records;
    }

    kit::FakeRecord event;
    kit::FakeRecord rule;
    bool result = false;
    const std::string parameterError =
        kit::Error("mordRev.cpp CMordRecv::SetProperty", "param error, set property fail");
};
