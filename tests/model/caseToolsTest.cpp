// The tools of the comparison.
#include <gtest/gtest.h>

#include "model/branches.h"
#include "model/caseGenerator.h"
#include "model/libraryRecord.h"
#include "model/session.h"
#include "model/trace.h"

namespace {

using namespace model;

// The trace of the model for this case on a new receiver.
std::vector<std::string> LinesOf(const TestCase& testCase) {
    BranchCounts branches;
    Session session(branches);
    session.SetVerbose();
    EXPECT_EQ(session.Run(testCase), "");
    return session.Seen().Lines();
}

TEST(CaseGenerator, CaseDependsOnItsArgumentsOnly) {
    const auto lines = LinesOf(MakeCase(1, 5, 1, true));
    EXPECT_EQ(LinesOf(MakeCase(1, 5, 1, true)), lines);
    EXPECT_NE(LinesOf(MakeCase(1, 6, 1, true)), lines);
    EXPECT_NE(LinesOf(MakeCase(2, 5, 1, true)), lines);
}

TEST(CaseGenerator, EveryThousandthCaseIsLarge) {
    BranchCounts branches;
    Session session(branches);
    EXPECT_EQ(session.Run(MakeCase(1, 2 * casesOfALargeOne - casesOfALargeOne / 2, 0, false)), "");
    for (const Branch branch :
         {Branch::EventOf256Rules, Branch::RuleMatchedBehind256, Branch::NoneOf256RulesMatched, Branch::AnswerBeyond64K,
          Branch::MatchOfThousandMids, Branch::ListOfThousandPairs, Branch::FifthListOfThousandPairs}) {
        EXPECT_GE(branches[branch], 1U) << static_cast<size_t>(branch);
    }
}

TEST(Difference, IsEmptyOnlyForEqualTraces) {
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

TEST(BranchCounts, NameTheBranchesBelowTheirShare) {
    BranchCounts counts;
    counts.AddReceiver();
    counts.Add(Branch::InitFresh);
    counts.Add(counts);
    EXPECT_EQ(counts[Branch::InitFresh], 2U);
    const auto isStarved = [&counts](uint64_t cases, const char* branch) {
        return counts.Starved(cases).find(std::string("  ") + branch + " ") != std::string::npos;
    };
    EXPECT_FALSE(isStarved(0, "InitFresh")); // 1 of 2 receivers
    EXPECT_TRUE(isStarved(20, "EventInModeActionTable"));
    EXPECT_FALSE(isStarved(20, "ListDeepRefused"));
    EXPECT_TRUE(isStarved(5000, "ListDeepRefused")); // one of 1000
    for (int i = 0; i < 40; ++i) {
        counts.AddReceiver();
    }
    EXPECT_TRUE(isStarved(0, "InitFresh")); // 21 less three times 4.6
    EXPECT_EQ(BranchCounts().Starved(0), "");
}

// The trace of one record.
std::string Line(int32_t level, const std::string& record) {
    Trace trace;
    AddRecord(level, std::basic_string<WideChar>(record.begin(), record.end()), trace);
    return trace.Lines().empty() ? "" : trace.Lines()[0];
}

TEST(LibraryRecord, LevelFunctionAndMessageOfACompleteRecord) {
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
