// What makes, compares and reduces cases: a tool that saw no difference where there is one would make every case agree.
#include <gtest/gtest.h>

#include "model/branches.h"
#include "model/caseGenerator.h"
#include "model/caseReducer.h"
#include "model/libraryRecords.h"
#include "model/operations.h"
#include "model/trace.h"

namespace {

using namespace model;

TEST(CaseGenerator, CaseDependsOnSeedAndNumberAlone) {
    const std::string dump = Dump(MakeCase(1, 5, true));
    EXPECT_EQ(Dump(MakeCase(1, 5, true)), dump);
    EXPECT_NE(Dump(MakeCase(1, 6, true)), dump);
    EXPECT_NE(Dump(MakeCase(2, 5, true)), dump);
}

TEST(CaseReducer, KeepsWhatIsNeededAndNothingElse) {
    TestCase testCase;
    EventScript inner = EventOf(0, {RuleRecord("a", ""), RuleRecord("b", ""), RuleRecord("c", "")}, "{}");
    EventScript outer = EventOf(0, {RuleRecord("d", ""), RuleRecord("e", "")}, "{}");
    outer.duringQuery = {StartOf(), HandlingOf(inner), StopOf()};
    testCase.operations = {InitOf(0), StartOf(), HandlingOf(outer), ClearingOf()};
    const TestCase reduced = Reduced(testCase, [](const TestCase& candidate) {
        return Dump(candidate).find("guid=\"b\\x00\"") != std::string::npos;
    });
    ASSERT_EQ(reduced.operations.size(), 1U);
    const EventScript& event = reduced.operations[0].event[0];
    EXPECT_EQ(event.rules.size(), 1U);
    ASSERT_EQ(event.duringQuery.size(), 1U);
    EXPECT_EQ(event.duringQuery[0].event[0].rules.size(), 1U);
}

TEST(Difference, IsEmptyForEqualTracesAlone) {
    Trace one;
    Trace other;
    EXPECT_EQ(Difference(one, other), "");
    one.Add("first");
    EXPECT_EQ(Difference(one, other), "  model    \"first\"\n");
    EXPECT_EQ(Difference(other, one), "  library  \"first\"\n");
    other.Add("first");
    EXPECT_EQ(Difference(one, other), "");
    one.AddLog(30, "C::", "F", {"a\n"});
    other.AddLog(35, "", "C::F", {"a\n"});
    EXPECT_EQ(Difference(one, other), "  both     \"first\"\n"
                                      "  model    \"log 30 C::F: a\\x0a\"\n"
                                      "  library  \"log 35 C::F: a\\x0a\"\n");
}

TEST(BranchCounts, NameTheOnesThatWereTakenLessOftenThanTheirShareAsksFor) {
    BranchCounts counts;
    counts.Add(Branch::InitFresh);
    counts.Add(counts);
    EXPECT_EQ(counts[Branch::InitFresh], 2U);
    EXPECT_EQ(counts.Starved(20).find("InitFresh"), std::string::npos); // 8 of 20 are asked for
    EXPECT_NE(counts.Starved(20).find("EventInModeActionTable"), std::string::npos);
    EXPECT_EQ(counts.Starved(20).find("ListDeepRefused"), std::string::npos);
    EXPECT_NE(counts.Starved(5000).find("ListDeepRefused"), std::string::npos); // one of 1000
    EXPECT_NE(counts.Starved(40).find("InitFresh"), std::string::npos);         // 16 less three times 4
    EXPECT_EQ(counts.Starved(0), "");
}

// The trace of one record.
std::string Line(int32_t level, const std::string& record) {
    Trace trace;
    LibraryRecords(trace).Take(level, std::basic_string<WideChar>(record.begin(), record.end()));
    return trace.Lines().empty() ? "" : trace.Lines()[0];
}

TEST(LibraryRecords, TakeLevelFunctionAndMessageOfWholeRecordsAlone) {
    const std::string time = "2026-11-16 14:03:07 ";
    EXPECT_EQ(Line(30, time + "[TRACE][a.cpp 12][C::F] [99] text] [1] \n\r\n"), "log 30 C::F: text] [1] \n");
    EXPECT_EQ(Line(35, time + "[ERROR][a.cpp 12][C::F] [99] \r\n"), "log 35 C::F: ");
    EXPECT_EQ(Line(35, time + "[ERROR][a.cpp 1][CMordRecv::GetProcPathByPid] [9] x ,lasterror=87\r\n"),
              "log 35 CMordRecv::GetProcPathByPid: x ,lasterror=N");
    EXPECT_EQ(Line(35, time + "[ERROR][a.cpp 1][CMordRecv::GetProcPathByPid] [9] x ,lasterror=\r\n"),
              "log 35 CMordRecv::GetProcPathByPid: x ,lasterror=");
    for (const std::string& record :
         {time + "[ERROR][a.cpp 12][C::F] [99] x\r\n", time + "[TRACE][/b/a.cpp 12][C::F] [99] x\r\n",
          time + "[TRACE][ 12][C::F] [99] x\r\n", time + "[TRACE][a.cpp][C::F] [99] x\r\n",
          time + "[TRACE][a.cpp 12][C::F] [] x\r\n", time + "[TRACE][a.cpp 12][C::F] [99] x\n",
          std::string("[TRACE][a.cpp 12][C::F] [99] x\r\n"), std::string()}) {
        EXPECT_TRUE(Line(30, record).starts_with("not a record")) << record;
    }
}

} // namespace
