// Counts how often the model takes each branch of the decision.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace model {

// Each name is a branch of the decision, a kind of document or a kind of input. The number is its least share: how
// often 10,000 new receivers, or 10,000 random cases, must take it. It is about half of what they usually do.
#define MODEL_BRANCHES_OF_RECEIVERS(X)                                                                                 \
    X(InitFresh, 5000)                                                                                                 \
    X(MidServiceFailed, 800)                                                                                           \
    X(MidServiceEmpty, 600)                                                                                            \
    X(MidFromService, 5000)                                                                                            \
    X(PropertyNoHost, 7000)                                                                                            \
    X(EventNoHost, 6000)

#define MODEL_BRANCHES_OF_CASES(X)                                                                                     \
    X(InitAgainAfterUninit, 400)                                                                                       \
    X(InitRepeated, 300)                                                                                               \
    X(InitNullHost, 100)                                                                                               \
    X(InitLoggingUnsettled, 200)                                                                                       \
    X(MidKept, 400)                                                                                                    \
    X(PropertyNullData, 300)                                                                                           \
    X(PropertyZeroSize, 400)                                                                                           \
    X(PropertyDefenderMode, 4000)                                                                                      \
    X(PropertyExceptionMode, 3000)                                                                                     \
    X(PropertyActions, 3000)                                                                                           \
    X(PropertyMid, 200)                                                                                                \
    X(PropertyMidEmpty, 100)                                                                                           \
    X(PropertyUnknown, 300)                                                                                            \
    X(EventNullReply, 100)                                                                                             \
    X(EventNull, 100)                                                                                                  \
    X(EventNullRules, 90)                                                                                              \
    X(EventNoRules, 80)                                                                                                \
    X(EventInNoMode, 500)                                                                                              \
    X(EventInModeAllForbid, 1000)                                                                                      \
    X(EventInModeTwo, 500)                                                                                             \
    X(EventInModeActionTable, 4000)                                                                                    \
    X(EventInModeAllow, 1000)                                                                                          \
    X(EventInModeEmergency, 500)                                                                                       \
    X(EventInUnknownMode, 1000)                                                                                        \
    X(FlagsNone, 4000)                                                                                                 \
    X(FlagsDisconnect, 700)                                                                                            \
    X(FlagsReplyTwo, 2000)                                                                                             \
    X(FlagsDisconnectAndReplyTwo, 700)                                                                                 \
    X(FlagsOthersToo, 3000)                                                                                            \
    X(EventAgain, 4000)                                                                                                \
    X(EventAfterUninit, 100)                                                                                           \
    X(EventEmergency, 400)                                                                                             \
    X(EventEmergencyAndDisconnect, 70)                                                                                 \
    X(EventDisconnect, 1000)                                                                                           \
    X(EventDisconnectInAllForbid, 100)                                                                                 \
    X(QueryNetworkErrorAllowed, 100)                                                                                   \
    X(QueryNetworkErrorBlocked, 500)                                                                                   \
    X(QueryNetworkErrorInAllForbid, 80)                                                                                \
    X(QueryNetworkErrorOtherException, 100)                                                                            \
    X(QueryNetworkErrorWithAnswer, 300)                                                                                \
    X(QueryOtherError, 400)                                                                                            \
    X(QueryOtherErrorWithAnswer, 200)                                                                                  \
    X(QueryNullAnswer, 200)                                                                                            \
    X(QueryAllForbid, 600)                                                                                             \
    X(AnswerEmpty, 40)                                                                                                 \
    X(AnswerRefused, 300)                                                                                              \
    X(AnswerRootNoObject, 100)                                                                                         \
    X(AnswerValueMissing, 300)                                                                                         \
    X(AnswerValueNoInteger, 400)                                                                                       \
    X(AnswerRuleNoObject, 300)                                                                                         \
    X(AnswerValueZero, 700)                                                                                            \
    X(AnswerMidMissing, 200)                                                                                           \
    X(AnswerMidNoObject, 300)                                                                                          \
    X(AnswerMidEmpty, 400)                                                                                             \
    X(AnswerMidTwice, 4000)                                                                                            \
    X(AnswerEntryStored, 5000)                                                                                         \
    X(AnswerGuidTwice, 2000)                                                                                           \
    X(EventOf256Rules, 9)                                                                                              \
    X(RuleMatchedBehind256, 9)                                                                                         \
    X(NoneOf256RulesMatched, 9)                                                                                        \
    X(AnswerBeyond64K, 9)                                                                                              \
    X(MatchOfThousandMids, 9)                                                                                          \
    X(ListOfThousandPairs, 9)                                                                                          \
    X(FifthListOfThousandPairs, 9)                                                                                     \
    X(AnswerOfManyRules, 20)                                                                                           \
    X(RuleNotStarted, 900)                                                                                             \
    X(RuleGuidAbsent, 4000)                                                                                            \
    X(RuleGuidAbsentAmongMany, 12)                                                                                     \
    X(RuleGuidAmongMany, 60)                                                                                           \
    X(RuleGuidWithoutMids, 200)                                                                                        \
    X(RuleKeyIsGuid, 800)                                                                                              \
    X(RuleKeyIsType, 3000)                                                                                             \
    X(RuleNotMatched, 3000)                                                                                            \
    X(RuleMatchedDotDeleted, 400)                                                                                      \
    X(RuleMatchedDotStays, 400)                                                                                        \
    X(FirstRuleMatched, 500)                                                                                           \
    X(LaterRuleMatched, 300)                                                                                           \
    X(NoRuleMatched, 3000)                                                                                             \
    X(MatchEmptyAllowList, 1000)                                                                                       \
    X(MatchKeyAbsent, 900)                                                                                             \
    X(MatchNoneInCommon, 600)                                                                                          \
    X(MatchOneInCommon, 700)                                                                                           \
    X(MatchOfManyMids, 1)                                                                                              \
    X(MatchInLargeList, 1)                                                                                             \
    X(MatchSeveralInCommon, 100)                                                                                       \
    X(ListRefused, 400)                                                                                                \
    X(ListRootNoObject, 100)                                                                                           \
    X(ListNoMidList, 100)                                                                                              \
    X(ListNoArray, 200)                                                                                                \
    X(ListEmptyArray, 300)                                                                                             \
    X(ListEntryNoObject, 600)                                                                                          \
    X(ListEntryBadMid, 1000)                                                                                           \
    X(ListEntryBadProtocol, 1000)                                                                                      \
    X(ListElementNoString, 1000)                                                                                       \
    X(ListMidCut, 500)                                                                                                 \
    X(ListKeyCut, 1000)                                                                                                \
    X(ListKeyNew, 10000)                                                                                               \
    X(ListKeyMerged, 10000)                                                                                            \
    X(ListMidTwice, 8000)                                                                                              \
    X(ListReplaced, 900)                                                                                               \
    X(ListRefusedOverFilled, 80)                                                                                       \
    X(ListEmptiesFilled, 90)                                                                                           \
    X(ListAfterList, 1000)                                                                                             \
    X(ClearFilled, 500)                                                                                                \
    X(ClearEmpty, 300)                                                                                                 \
    X(ActionsRefused, 200)                                                                                             \
    X(ActionsRootNoObject, 70)                                                                                         \
    X(ActionsEmpty, 400)                                                                                               \
    X(ActionsBadValue, 1000)                                                                                           \
    X(ActionsEmptyKey, 500)                                                                                            \
    X(ActionsKeyCut, 300)                                                                                              \
    X(ActionsRowTrue, 3000)                                                                                            \
    X(ActionsRowFalse, 1000)                                                                                           \
    X(ActionsRowAgain, 2000)                                                                                           \
    X(ActionsReplaced, 300)                                                                                            \
    X(ActionsRefusedOverFilled, 30)                                                                                    \
    X(ActionsEmptyFilled, 40)                                                                                          \
    X(ModifyAllowAfterDecision, 1000)                                                                                  \
    X(ModifyActionTrue, 800)                                                                                           \
    X(ModifyActionFalse, 300)                                                                                          \
    X(ModifyNoRow, 3000)                                                                                               \
    X(ModifyOtherMode, 3000)                                                                                           \
    X(ModifyFlagged, 1000)                                                                                             \
    X(ModifyBlockStaysUnderFlag, 1000)                                                                                 \
    X(ModifyBlockBecameAllow, 1000)                                                                                    \
    X(ReportNoSink, 600)                                                                                               \
    X(ReportEmergency, 400)                                                                                            \
    X(ReportDisconnect, 1000)                                                                                          \
    X(ReportSystemProcess, 2000)                                                                                       \
    X(ReportProcessNotFound, 4000)                                                                                     \
    X(ReportOfMatchedRule, 2000)                                                                                       \
    X(ReportOfSeveralRules, 4000)                                                                                      \
    X(ReportBlock, 4000)                                                                                               \
    X(ReportAllow, 2000)                                                                                               \
    X(ReportBlockModified, 1000)                                                                                       \
    X(TextAbsent, 1000)                                                                                                \
    X(TextSizeNotPositive, 900)                                                                                        \
    X(TextSecondCallFailed, 900)                                                                                       \
    X(TextWithoutNul, 1000)                                                                                            \
    X(TextNulBeforeEnd, 1000)                                                                                          \
    X(TextEmpty, 6000)                                                                                                 \
    X(TextLong, 100)                                                                                                   \
    X(TextIllFormed, 7000)                                                                                             \
    X(TextEscaped, 4000)                                                                                               \
    X(NumberFailed, 3000)                                                                                              \
    X(NumberFailedButWritten, 1000)                                                                                    \
    X(NumberNegative, 4000)                                                                                            \
    X(NumberAtEdge, 1000)                                                                                              \
    X(LongNumberFailed, 700)                                                                                           \
    X(LongNumberAtEdge, 2000)                                                                                          \
    X(WithinQuery, 200)                                                                                                \
    X(WithinFree, 200)                                                                                                 \
    X(WithinDelete, 20)                                                                                                \
    X(WithinReport, 200)                                                                                               \
    X(EventWithinEvent, 80)                                                                                            \
    X(DocumentWithinEvent, 200)                                                                                        \
    X(ListBlank, 100)                                                                                                  \
    X(ListDeepRefused, 10)                                                                                             \
    X(ListDeep, 40)                                                                                                    \
    X(ListLongString, 50)                                                                                              \
    X(ListNulInside, 1000)                                                                                             \
    X(ListEdgeNumber, 200)                                                                                             \
    X(ListBeyondEdge, 100)                                                                                             \
    X(ListMemberTwice, 800)                                                                                            \
    X(ListIllFormed, 2000)                                                                                             \
    X(ActionsBlank, 70)                                                                                                \
    X(ActionsDeepRefused, 10)                                                                                          \
    X(ActionsDeep, 10)                                                                                                 \
    X(ActionsLongString, 10)                                                                                           \
    X(ActionsNulInside, 300)                                                                                           \
    X(ActionsEdgeNumber, 1000)                                                                                         \
    X(ActionsBeyondEdge, 20)                                                                                           \
    X(ActionsMemberTwice, 1000)                                                                                        \
    X(ActionsIllFormed, 700)                                                                                           \
    X(AnswerBlank, 50)                                                                                                 \
    X(AnswerDeepRefused, 10)                                                                                           \
    X(AnswerDeep, 100)                                                                                                 \
    X(AnswerLongString, 30)                                                                                            \
    X(AnswerNulInside, 1000)                                                                                           \
    X(AnswerEdgeNumber, 3000)                                                                                          \
    X(AnswerBeyondEdge, 100)                                                                                           \
    X(AnswerMemberTwice, 3000)                                                                                         \
    X(AnswerIllFormed, 2000)

enum class Branch : size_t {
#define MODEL_BRANCH_NAME(name, share) name,
    MODEL_BRANCHES_OF_RECEIVERS(MODEL_BRANCH_NAME) MODEL_BRANCHES_OF_CASES(MODEL_BRANCH_NAME)
#undef MODEL_BRANCH_NAME
        Count
};

// Sizes at which an implementation may store or count in another way.
constexpr size_t many = 10;
constexpr size_t veryMany = 130;
constexpr size_t byteRange = 256;
constexpr size_t largeList = 1000;
constexpr size_t sixteenBits = 65536;

class BranchCounts {
public:
    void Add(Branch branch) { ++m_counts[static_cast<size_t>(branch)]; }
    void Add(const BranchCounts& other);
    uint64_t operator[](Branch branch) const { return m_counts[static_cast<size_t>(branch)]; }

    void AddReceiver() { ++m_receivers; }

    // The branches that `cases` cases took less often than their share requires, one a line; empty when there are none.
    // Three standard deviations of chance are allowed; a share of five or more requires at least one.
    std::string Starved(uint64_t cases) const;

    // All branches, one a line: count, count per 10,000, least share.
    std::string Table(uint64_t cases) const;

private:
    std::string Row(size_t branch, uint64_t cases) const;

    std::array<uint64_t, static_cast<size_t>(Branch::Count)> m_counts{};
    uint64_t m_receivers = 0;
};

} // namespace model
