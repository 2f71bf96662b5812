// The log records on the pages of docs/, apart from time, line and thread.
#include <algorithm>
#include <sstream>

#include "docs/markdown.h"
#include "docs/sourceTree.h"
#include "kit/host/receiverFixture.h"

namespace {

class LogExamples : public kit::ReceiverFixture {
protected:
    // The records from Init to the first event of the small host.
    std::vector<std::string> RecordsOfARun() {
        siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
        EXPECT_TRUE(receiver->Init(&host));
        receiver->SetReportSink(&sink);
        receiver->Start();
        EXPECT_TRUE(receiver->SetAllowList(R"({"mid_list": [{"mid": "LAPTOP-12", "protocol": ["ssh"]}]})"));
        host.answer = R"({"rule-ssh": {"value": 1, "mid": {"LAPTOP-12": 1}}})";
        kit::FakeRecord event;
        event.Int32("pid", 4);
        kit::FakeRecord rule = kit::MakeRule("rule-ssh", "ssh");
        IEventRecord* rules[] = {&rule};
        uint32_t reply = REPLY_BLOCK;
        EXPECT_TRUE(receiver->HandleEvent(&event, rules, 1, &reply));
        EXPECT_EQ(reply, REPLY_ALLOW);
        return TakeRecords();
    }
};

TEST_F(LogExamples, MatchRecordsOfTheLibrary) {
    const std::vector<std::string> written = RecordsOfARun();
    int shown = 0;
    for (const auto& page : docs::FilesBelow("docs", ".md")) {
        for (const docs::CodeBlock& block : docs::CodeBlocks(docs::ReadText(page))) {
            if (block.Word(1) != "log") {
                continue;
            }
            std::istringstream lines(block.text);
            for (std::string line; std::getline(lines, line);) {
                ++shown;
                const std::string record = kit::MaskRecord(line + "\r\n");
                EXPECT_NE(std::find(written.begin(), written.end(), record), written.end())
                    << page.filename().string() << ":" << block.line << " " << record;
            }
        }
    }
    EXPECT_GE(shown, 2);
}

} // namespace
