// Log records of the shipped library, as its logger receives them.
#include <chrono>
#include <cstdio>
#include <thread>

#include "kit/system/threadId.h"
#include "product/productDecision.h"

using namespace kit;

namespace {

class ProductRecords : public ProductDecision {
protected:
    // The records of an emergency event, unmasked.
    Lines RawRecords() {
        SetNumber(PROP_DEFENDER_MODE, MODE_EMERGENCY);
        siblings.TakeRecordTexts();
        Decide();
        Lines raw;
        for (const auto& record : siblings.Records()) {
            raw.push_back(record.raw);
        }
        return raw;
    }
};

TEST_F(ProductRecords, OfAMatchedEventStandInThisOrder) {
    host.answer = AnswerText("GUID-1", {"MID-1"});
    Allow("MID-1", {"TYPE-1"});
    EXPECT_TRUE(SetText(PROP_ACTION_JSON, R"({"TYPE-1":1,"":1})"));
    EXPECT_EQ(Decide(), (Verdict{true, REPLY_ALLOW}));
    EXPECT_EQ(TakeRecords(),
              Joined({{inParseActionJson.Error("key  format error"), inParseActionJson.Trace("type action parse ret=1"),
                       inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json=" + *host.answer),
                       inParseQueryResult.Trace("guid is:GUID-1"), inParseQueryResult.Trace("get mid=MID-1"),
                       inIsMatchmid.Trace("CMordRecv::IsMatchmid success,mid_match_output matchedMID-1"),
                       inHandleEventInner.Trace("match mid=MID-1,rule guid=GUID-1,reply:1"),
                       inHandleEventInner.Trace("del dot,ret=1,rule guidGUID-1"),
                       inModiyReply.Trace("type=TYPE-1,defender mode=3,action=1")},
                      ReportRecords(Report(false))}));
}

TEST_F(ProductRecords, OfFailuresAreErrors) {
    receiver->SetAllowList("{");
    receiver->SetAllowList("{}");
    receiver->ClearAllowList();
    receiver->HandleEvent(&event, nullptr, 0, nullptr);
    receiver->SetProperty(PROP_MID, nullptr, 0);
    host.answer = "no json";
    Decide();
    EXPECT_EQ(
        TakeRecords(),
        Joined({{inSetAllowList.Error("error_code4error_offset1"), inSetAllowList.Trace("parse allow list, ret0"),
                 inSetAllowList.Error("format error"), inSetAllowList.Trace("parse allow list, ret0"),
                 inClearAllowList.Trace("ClearAllowList_mids start"), inHandleEvent.Trace("==>enter"),
                 inHandleEvent.Error("param error"), inSetProperty.Error("param error, set property fail"),
                 inHandleEvent.Trace("==>enter"), inHandleEvent.Trace("query dot result_json=no json"),
                 inParseQueryResult.Error("data format error."), inHandleEvent.Trace(" query dot error, reply=0")},
                ReportRecords(Report(true))}));
}

TEST_F(ProductRecords, ShowThePresentTimeInUtcPlus8) {
    using namespace std::chrono;
    const auto before = floor<seconds>(system_clock::now());
    const Lines records = RawRecords();
    const auto after = floor<seconds>(system_clock::now());
    ASSERT_FALSE(records.empty());
    for (const std::string& record : records) {
        int year = 0;
        unsigned month = 0;
        unsigned day = 0;
        int hour = 0;
        int minute = 0;
        int second = 0;
        ASSERT_EQ(std::sscanf(record.c_str(), "%d-%u-%u %d:%d:%d ", &year, &month, &day, &hour, &minute, &second), 6);
        const auto shown = sys_days(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day)) +
                           hours(hour) + minutes(minute) + seconds(second) - hours(8);
        EXPECT_GE(shown, before) << record;
        EXPECT_LE(shown, after) << record;
    }
}

TEST_F(ProductRecords, NameTheThreadThatLogged) {
    const std::string here = "] [" + std::to_string(ThreadId()) + "] ";
    for (const std::string& record : RawRecords()) {
        EXPECT_NE(record.find(here), std::string::npos) << record;
    }
    std::thread([this, &here] {
        const std::string there = "] [" + std::to_string(ThreadId()) + "] ";
        EXPECT_NE(here, there);
        const Lines records = RawRecords();
        EXPECT_FALSE(records.empty());
        for (const std::string& record : records) {
            EXPECT_NE(record.find(there), std::string::npos) << record;
        }
    }).join();
}

TEST_F(ProductRecords, HaveThisForm) {
    const Lines records = RawRecords();
    ASSERT_EQ(records.size(), 4U);
    const std::string& first = records.front();
    const std::string time = first.substr(0, 19);
    const std::string site = " [TRACE][eventEntry.cpp ";
    EXPECT_EQ(first.substr(19, site.size()), site);
    const size_t line = 19 + site.size();
    const size_t end = first.find(']', line);
    EXPECT_EQ(first.substr(line, end - line), std::to_string(std::stoi(first.substr(line))));
    EXPECT_EQ(first.substr(end), "][CMordRecv::HandleEvent] [" + std::to_string(ThreadId()) + "] ==>enter\r\n");
}

TEST_F(ProductRecords, CarryNonAsciiValues) {
    rules.front() = MakeRule("\xC3\xA4\xF0\x9F\x98\x80", "TYPE-1");
    host.answer = "{}";
    Decide();
    EXPECT_EQ(TakeRecords().at(2),
              inHandleEventInner.Trace("query dot result is empty, reply=0,rule guid\xC3\xA4\xF0\x9F\x98\x80"));
}

TEST_F(ProductRecords, OfLongTextsAreWhole) {
    const std::string guid(5000, 'g');
    rules.front() = MakeRule(guid, "TYPE-1");
    host.answer = "{}";
    Decide();
    EXPECT_EQ(TakeRecords().at(2), inHandleEventInner.Trace("query dot result is empty, reply=0,rule guid" + guid));
}

using ProductWithoutLog = ProductFixture;

TEST_F(ProductWithoutLog, DecidesAndWritesAndConvertsNothing) {
    IMordRev* const receiver = Receiver();
    ASSERT_TRUE(receiver->Init(&host));
    receiver->SetReportSink(&sink);
    receiver->Start();
    ASSERT_TRUE(receiver->SetAllowList(AllowText("MID-1", {"TYPE-1"}).c_str()));
    siblings.keepsConversions = true;
    host.answer = AnswerText("GUID-1", {"MID-1"});
    FakeRecord event = SampleEvent();
    FakeRecord rule = MakeRule("GUID-1", "TYPE-1");
    IEventRecord* rules[] = {&rule};
    uint32_t reply = 0;
    EXPECT_TRUE(receiver->HandleEvent(&event, rules, 1, &reply));
    EXPECT_EQ(reply, REPLY_ALLOW);
    EXPECT_EQ(sink.Reports().size(), 1U);
    EXPECT_EQ(siblings.RecordTexts(), Lines{});
    EXPECT_EQ(siblings.Conversions(), Lines{});
    receiver->SetReportSink(nullptr);
    receiver->Stop();
}

} // namespace
