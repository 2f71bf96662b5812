// A running receiver whose memory runs out, and the event by which it is asked afterwards.
#pragma once

#include <set>
#include <string>
#include <utility>

#include "kit/host/countingHost.h"
#include "kit/host/decisionSamples.h"
#include "kit/host/receiverFixture.h"
#include "mordRev/src/spareBlocks.h"
#include "unit/mordRev/exhaustedMemory.h"

namespace exhausted {

// A host and a sink that keep, where a test wants it, what they were given.
class KeepingHost : public kit::CountingHost {
public:
    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override {
        if (keeps) {
            calls += "DeleteDot(" + std::string(guid) + "," + mid + "," + std::to_string(kind) + "," + type + ")\n";
        }
        return kit::CountingHost::DeleteDot(guid, mid, kind, type);
    }
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override {
        if (keeps) {
            calls += "QueryDot(" + std::string(guidJson) + "," + mid + ")\n";
        }
        return kit::CountingHost::QueryDot(guidJson, mid, result);
    }

    bool keeps = false;
    std::string calls;
};

class KeepingSink : public kit::CountingSink {
public:
    explicit KeepingSink(KeepingHost& host) : m_host(host) {}

    int32_t Report(int32_t kind, const char* text, uint32_t size) override {
        if (m_host.keeps) {
            m_host.calls += "Report(" + std::to_string(kind) + "," + std::string(text, size) + ")\n";
        }
        return kit::CountingSink::Report(kind, text, size);
    }

private:
    KeepingHost& m_host;
};

// The tables are set by documents alone. Logging is off, unless a test turns LogFileEnabled on.
class ExhaustedMemory : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        MakeRunning();
        WarmUp(Fields().Lock());
        LogFileEnabled = false;
        GiveBlock(TakeBlock()); // spare from now on
        Fields().Host() = &countingHost;
        receiver->SetReportSink(&countingSink);
        std::string mid = longText + "mid";
        receiver->SetProperty(PROP_MID, mid.data(), 1);
        countingHost.answer = kit::AnswerText(longText + "guid", {longText + "1", longText + "2"});
    }

    template <typename Operation, typename Before, typename After>
    size_t Sweep(const Operation& operation, const Before& before, const After& after,
                 std::initializer_list<bool> ways = {false, true}) {
        const size_t failures = exhausted::Sweep(
            Fields().Lock(), operation,
            [&] {
                siblings.TakeRecordTexts();
                siblings.calls.Take();
                before();
            },
            after, ways);
        EXPECT_GT(failures, 0U);
        return failures;
    }

    // An event with two rules of one type, of whose guids the second is in the answer: what the host is asked and told,
    // and the reply, are those of the tables as they stand. It writes no records.
    void ExpectTheKnownEventDecided() {
        const bool logs = std::exchange(LogFileEnabled, false);
        kit::FakeRecord event = kit::MakeFullRecord("", "");
        IEventRecord* rules[] = {&first, &second};
        const bool allowed = IsAllowed();
        const auto row = Fields().Actions().find(longText + "type");
        const bool acted = row != Fields().Actions().end() && row->second;
        kit::ExpectedReport report;
        report.guids = {longText + "guid"};
        if (!allowed) {
            report.guids = {longText + "other guid", longText + "guid"};
        }
        report.type = longText + "type";
        report.block = !allowed && !acted;
        report.blockModified = !allowed && acted;
        report.sendIp = report.recvIp = kit::fullRecordText;
        report.sendPort = report.recvPort = report.netDrvVersion = "1";
        std::string expected = kit::QueryCall({longText + "other guid", longText + "guid"}, longText + "mid") + "\n";
        if (allowed) {
            expected += kit::DeleteCall(longText + "guid", longText + "mid", longText + "type") + "\n";
        }
        expected += kit::ReportCall(report) + "\n";

        countingHost.keeps = true;
        countingHost.calls.clear();
        uint32_t reply = 77;
        EXPECT_EQ(receiver->HandleEvent(&event, rules, 2, &reply), allowed);
        countingHost.keeps = false;
        EXPECT_EQ(countingHost.calls, expected);
        EXPECT_EQ(reply, report.block ? REPLY_BLOCK : REPLY_ALLOW);
        LogFileEnabled = logs;
    }

    // A document that allows the machine ids `mids` under the known event's type.
    static std::string ListOf(const std::string& mid) { return kit::AllowText(mid, {longText + "type"}); }

    KeepingHost countingHost;
    KeepingSink countingSink{countingHost};
    kit::FakeRecord first = kit::MakeFullRecord(longText + "other guid", longText + "type");
    kit::FakeRecord second = kit::MakeFullRecord(longText + "guid", longText + "type");

private:
    bool IsAllowed() {
        const auto entry = Fields().AllowedMids().find(longText + "type");
        return entry != Fields().AllowedMids().end() &&
               (entry->second.contains(longText + "1") || entry->second.contains(longText + "2"));
    }
};

} // namespace exhausted
