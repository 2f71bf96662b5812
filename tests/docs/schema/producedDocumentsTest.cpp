// Requests and reports of all kinds of decisions fit their schemas.
#include "docs/schema/schemaFile.h"
#include "kit/host/receiverFixture.h"

namespace {

using kit::FakeRecord;
using kit::MakeRule;

// Records the requests.
class RequestKeeper : public kit::RecordingHost {
public:
    using RecordingHost::RecordingHost;

    std::vector<std::string> requests;

    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override {
        requests.emplace_back(guidJson);
        return RecordingHost::QueryDot(guidJson, mid, result);
    }
};

class ProducedDocuments : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        ASSERT_TRUE(receiver->Init(&keeper));
        receiver->SetReportSink(&sink);
        receiver->Start();
        ASSERT_TRUE(receiver->SetAllowList(R"({"mid_list": [{"mid": "M1", "protocol": ["ssh", "web-1"]}]})"));
        ASSERT_TRUE(receiver->ParseActionJson(R"({"print": 1})"));
        keeper.answer = R"({"web-1": {"value": 1, "mid": {"M1": 1}}})";
    }

    // Handles an event and checks the request and the report.
    uint32_t Decide(FakeRecord event, std::vector<FakeRecord> rules) {
        std::vector<IEventRecord*> pointers;
        for (FakeRecord& rule : rules) {
            pointers.push_back(&rule);
        }
        const size_t requests = keeper.requests.size();
        const size_t reports = sink.Reports().size();
        uint32_t reply = 0;
        receiver->HandleEvent(&event, pointers.data(), static_cast<uint32_t>(pointers.size()), &reply);
        EXPECT_EQ(keeper.requests.size(), requests + 1);
        EXPECT_EQ(sink.Reports().size(), reports + 1);
        EXPECT_EQ(schema::SchemaFile("queryRequest").Misfit(keeper.requests.back()), "") << keeper.requests.back();
        EXPECT_EQ(schema::SchemaFile("report").Misfit(sink.Reports().back()), "") << sink.Reports().back();
        return reply;
    }

    static FakeRecord Event() {
        FakeRecord event;
        event.Int32("pid", 4).String("remote_addr_ip", "192.0.2.12").Int32("remote_addr_port", 49152);
        event.String("local_addr_ip", "192.0.2.1").Int32("local_addr_port", 443).Int64("net_drv", 20001);
        return event;
    }

    RequestKeeper keeper{calls};
};

TEST_F(ProducedDocuments, FitForARuleThatAllows) {
    EXPECT_EQ(Decide(Event(), {MakeRule("ssh-1", "ssh"), MakeRule("web-1", "web")}), REPLY_ALLOW);
}

TEST_F(ProducedDocuments, FitForABlock) {
    EXPECT_EQ(Decide(Event(), {MakeRule("ssh-1", "ssh"), MakeRule("ssh-1", "ssh")}), REPLY_BLOCK);
}

TEST_F(ProducedDocuments, FitForAnActionThatAllows) {
    EXPECT_EQ(Decide(Event(), {MakeRule("print-1", "print")}), REPLY_ALLOW);
}

TEST_F(ProducedDocuments, FitForAFlaggedAllow) {
    EXPECT_EQ(Decide(Event().Int32("flags", EVENT_FLAG_REPLY_TWO), {MakeRule("web-1", "web")}), REPLY_ALLOW_FLAGGED);
}

TEST_F(ProducedDocuments, FitForFailedQueries) {
    keeper.queryCode = DOT_QUERY_NETWORK_ERROR;
    EXPECT_EQ(Decide(Event(), {MakeRule("web-1", "web")}), REPLY_BLOCK);
    keeper.queryCode = 1;
    EXPECT_EQ(Decide(Event(), {MakeRule("web-1", "web")}), REPLY_BLOCK);
}

TEST_F(ProducedDocuments, FitForEmptyRecords) {
    EXPECT_EQ(Decide(FakeRecord(), {FakeRecord(), FakeRecord()}), REPLY_BLOCK);
}

TEST_F(ProducedDocuments, FitForExtremeValues) {
    FakeRecord event = Event();
    event.Int32("remote_addr_port", -1).Int32("local_addr_port", 2147483647).Int64("net_drv", INT64_MIN);
    Decide(event, {MakeRule("web-1", "web")});
    event.Int64("net_drv", INT64_MAX);
    Decide(event, {MakeRule("web-1", "web")});
}

TEST_F(ProducedDocuments, FitForEscapedText) {
    FakeRecord event = Event();
    event.String("remote_addr_ip", "\"\\\b\f\n\r\t\x01\x7F/");
    Decide(event, {MakeRule("\"quoted\"\n\\", "t\xC3\xBCr")});
}

TEST_F(ProducedDocuments, FitForAnUnknownProcess) {
    FakeRecord event = Event();
    event.Int32("pid", 0x7FFFFFF0);
    Decide(event, {MakeRule("web-1", "web")});
}

} // namespace
