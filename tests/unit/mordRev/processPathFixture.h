// Reports of events that belong to a process.
#pragma once

#include "unit/mordRev/decisionFixture.h"

class ProcessPathFixture : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        AddRule("GUID-1", "TYPE-1");
    }

    void Send() { receiver->ReportEventHandleRes(&event, rulePointers.data(), 1, REPLY_BLOCK, false); }

    static kit::ExpectedReport Expected(const std::string& name, const std::string& path) {
        return {.guids = {"GUID-1"}, .type = "TYPE-1", .procName = name, .procPath = path};
    }

    // The records of a report before which the look-up logged `error`.
    static Lines RecordsWithError(const std::string& error, const kit::ExpectedReport& report = Expected("", "")) {
        const Lines records = kit::ReportRecords(report);
        return {records[0], error, records[1], records[2]};
    }

    // The report of an event that holds nothing.
    static kit::ExpectedReport ExpectedOfNothing() {
        return {.guids = {"GUID-1"},
                .type = "TYPE-1",
                .procName = "",
                .procPath = "",
                .sendIp = "",
                .sendPort = "0",
                .recvIp = "",
                .recvPort = "0",
                .netDrvVersion = "0"};
    }
};
