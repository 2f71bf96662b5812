// A sample event, and the texts that tests expect of decisions: requests, reports, and log records by their site.
// Requests and reports are put together by hand here, with no writer of the library's behind them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kit/host/fakeRecord.h"
#include "kit/text/logRecords.h"

namespace kit {

using Lines = std::vector<std::string>;

// A place in the library's code that logs.
struct RecordSite {
    std::string_view site;

    std::string Trace(std::string_view message) const { return kit::Trace(site, message); }
    std::string Error(std::string_view message) const { return kit::Error(site, message); }
};

constexpr RecordSite inHandleEvent{"eventEntry.cpp CMordRecv::HandleEvent"};
constexpr RecordSite inHandleEventInner{"eventMatch.cpp CMordRecv::HandleEventInner"};
constexpr RecordSite inIsMatchmid{"midMatch.cpp CMordRecv::IsMatchmid"};
constexpr RecordSite inModiyReply{"actionTable.cpp CMordRecv::ModiyReply"};
constexpr RecordSite inParseActionJson{"actionTable.cpp CMordRecv::ParseActionJson"};
constexpr RecordSite inParseQueryResult{"queryResult.cpp CMordRecv::ParseQueryResult"};
constexpr RecordSite inReport{"report.cpp CMordRecv::ReportEventHandleRes"};
constexpr RecordSite inSetAllowList{"allowList.cpp CMordRecv::SetAllowList"};
constexpr RecordSite inClearAllowList{"allowList.cpp CMordRecv::ClearAllowList"};
constexpr RecordSite inSetProperty{"mordRev.cpp CMordRecv::SetProperty"};

// A connection of the system process, whose path is known without a look-up.
inline FakeRecord SampleEvent(CallLog* reads = nullptr) {
    FakeRecord event("event", reads);
    event.Int32("pid", 4)
        .String("remote_addr_ip", "10.0.0.2")
        .Int32("remote_addr_port", 49152)
        .String("local_addr_ip", "10.0.0.1")
        .Int32("local_addr_port", 445)
        .Int64("net_drv", 20001);
    return event;
}

// An array member of a document, over several lines. The elements stand as they are to appear, without their quotes.
inline std::string ArrayText(const std::string& key, const Lines& elements) {
    std::string text = "    \"" + key + "\": [\n";
    for (size_t i = 0; i < elements.size(); ++i) {
        text += "        \"" + elements[i] + (i + 1 < elements.size() ? "\",\n" : "\"\n");
    }
    return text + "    ]";
}

// The query request for these guids.
inline std::string RequestText(const Lines& guids) {
    return "{\n" + ArrayText("guid", guids) + "\n}";
}

// What a report holds; by default that of the sample event, blocked and not modified.
struct ExpectedReport {
    Lines guids;
    std::string type;
    bool block = true;
    bool blockModified = false;
    std::string procName = "System";
    std::string procPath = "System";
    std::string sendIp = "10.0.0.2";
    std::string sendPort = "49152";
    std::string recvIp = "10.0.0.1";
    std::string recvPort = "445";
    std::string netDrvVersion = "20001";

    std::string Text() const {
        const auto member = [](const char* key, const std::string& value) {
            return "    \"" + std::string(key) + "\": " + value + ",\n";
        };
        const auto quoted = [](const std::string& value) { return "\"" + value + "\""; };
        const auto truth = [](bool value) { return std::string(value ? "true" : "false"); };
        return "{\n" + ArrayText("rule_guid", guids) + ",\n" + member("type", quoted(type)) +
               member("block", truth(block)) + member("block_modified", truth(blockModified)) +
               member("proc_name", quoted(procName)) + member("proc_path", quoted(procPath)) +
               member("send_ip", quoted(sendIp)) + member("send_port", quoted(sendPort)) +
               member("recv_ip", quoted(recvIp)) + member("recv_port", quoted(recvPort)) + member("send_mid", "\"\"") +
               member("net_drv_version", quoted(netDrvVersion)) + "    \"protocol\": \"" + type + "\"\n}";
    }
};

// Calls as RecordingHost and RecordingSink log them.
inline std::string QueryCall(const Lines& guids, const std::string& mid) {
    return "QueryDot(" + RequestText(guids) + "," + mid + ")";
}
inline std::string DeleteCall(const std::string& guid, const std::string& mid, const std::string& type) {
    return "DeleteDot(" + guid + "," + mid + ",2," + type + ")";
}
inline std::string ReportCall(const ExpectedReport& report) {
    return "Report(1," + report.Text() + ")";
}

// The three records of a report that goes out.
inline Lines ReportRecords(const ExpectedReport& report) {
    return {inReport.Trace("==>enter"), inReport.Trace("ReportEventHandleRes json=" + report.Text()),
            inReport.Trace("==>leave")};
}

// A query answer with one entry: the machine ids of `guid`. Texts stand as they are to appear.
inline std::string AnswerText(const std::string& guid, const Lines& mids) {
    std::string text = "{\"" + guid + "\":{\"value\":1,\"mid\":{";
    for (size_t i = 0; i < mids.size(); ++i) {
        text += (i == 0 ? "\"" : ",\"") + mids[i] + "\":1";
    }
    return text + "}}}";
}

// An allow-list document with one entry: `mid` under `protocols`.
inline std::string AllowText(const std::string& mid, const Lines& protocols) {
    std::string text = R"({"mid_list":[{"mid":")" + mid + R"(","protocol":[)";
    for (size_t i = 0; i < protocols.size(); ++i) {
        text += (i == 0 ? "\"" : ",\"") + protocols[i] + "\"";
    }
    return text + "]}]}";
}

// `parts` one behind the other.
inline Lines Joined(const std::vector<Lines>& parts) {
    Lines all;
    for (const Lines& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

} // namespace kit
