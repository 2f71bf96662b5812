// The branches of the decision, each counted as often as a run of the model takes it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace model {

// Every name is one place where the decision, or a document, can go one way or another.
#define MODEL_BRANCHES(X)                                                                                              \
    X(InitFresh)                                                                                                       \
    X(InitAgainAfterUninit)                                                                                            \
    X(InitRepeated)                                                                                                    \
    X(InitNullHost)                                                                                                    \
    X(InitLoggingUnsettled)                                                                                            \
    X(MidKept)                                                                                                         \
    X(MidServiceFailed)                                                                                                \
    X(MidServiceEmpty)                                                                                                 \
    X(MidFromService)                                                                                                  \
    X(PropertyNullData)                                                                                                \
    X(PropertyZeroSize)                                                                                                \
    X(PropertyNoHost)                                                                                                  \
    X(PropertyDefenderMode)                                                                                            \
    X(PropertyExceptionMode)                                                                                           \
    X(PropertyActions)                                                                                                 \
    X(PropertyMid)                                                                                                     \
    X(PropertyMidEmpty)                                                                                                \
    X(PropertyUnknown)                                                                                                 \
    X(EventNullReply)                                                                                                  \
    X(EventNoHost)                                                                                                     \
    X(EventNull)                                                                                                       \
    X(EventNullRules)                                                                                                  \
    X(EventNoRules)                                                                                                    \
    X(EventEmergency)                                                                                                  \
    X(EventEmergencyAndDisconnect)                                                                                     \
    X(EventDisconnect)                                                                                                 \
    X(EventDisconnectInAllForbid)                                                                                      \
    X(QueryNetworkErrorAllowed)                                                                                        \
    X(QueryNetworkErrorBlocked)                                                                                        \
    X(QueryNetworkErrorInAllForbid)                                                                                    \
    X(QueryNetworkErrorWithAnswer)                                                                                     \
    X(QueryOtherError)                                                                                                 \
    X(QueryNullAnswer)                                                                                                 \
    X(QueryAllForbid)                                                                                                  \
    X(AnswerEmpty)                                                                                                     \
    X(AnswerRefused)                                                                                                   \
    X(AnswerRootNoObject)                                                                                              \
    X(AnswerValueMissing)                                                                                              \
    X(AnswerValueNoInteger)                                                                                            \
    X(AnswerRuleNoObject)                                                                                              \
    X(AnswerValueZero)                                                                                                 \
    X(AnswerMidMissing)                                                                                                \
    X(AnswerMidNoObject)                                                                                               \
    X(AnswerMidEmpty)                                                                                                  \
    X(AnswerMidTwice)                                                                                                  \
    X(AnswerEntryStored)                                                                                               \
    X(AnswerGuidTwice)                                                                                                 \
    X(RuleNotStarted)                                                                                                  \
    X(RuleGuidAbsent)                                                                                                  \
    X(RuleGuidWithoutMids)                                                                                             \
    X(RuleKeyIsGuid)                                                                                                   \
    X(RuleKeyIsType)                                                                                                   \
    X(RuleNotMatched)                                                                                                  \
    X(RuleMatchedDotDeleted)                                                                                           \
    X(RuleMatchedDotStays)                                                                                             \
    X(FirstRuleMatched)                                                                                                \
    X(LaterRuleMatched)                                                                                                \
    X(NoRuleMatched)                                                                                                   \
    X(MatchEmptyAllowList)                                                                                             \
    X(MatchKeyAbsent)                                                                                                  \
    X(MatchNoneInCommon)                                                                                               \
    X(MatchOneInCommon)                                                                                                \
    X(MatchSeveralInCommon)                                                                                            \
    X(ListRefused)                                                                                                     \
    X(ListRootNoObject)                                                                                                \
    X(ListNoMidList)                                                                                                   \
    X(ListNoArray)                                                                                                     \
    X(ListEmptyArray)                                                                                                  \
    X(ListEntryNoObject)                                                                                               \
    X(ListEntryBadMid)                                                                                                 \
    X(ListEntryBadProtocol)                                                                                            \
    X(ListElementNoString)                                                                                             \
    X(ListMidCut)                                                                                                      \
    X(ListKeyCut)                                                                                                      \
    X(ListKeyNew)                                                                                                      \
    X(ListKeyMerged)                                                                                                   \
    X(ListMidTwice)                                                                                                    \
    X(ListReplaced)                                                                                                    \
    X(ClearFilled)                                                                                                     \
    X(ClearEmpty)                                                                                                      \
    X(ActionsRefused)                                                                                                  \
    X(ActionsRootNoObject)                                                                                             \
    X(ActionsEmpty)                                                                                                    \
    X(ActionsBadValue)                                                                                                 \
    X(ActionsEmptyKey)                                                                                                 \
    X(ActionsKeyCut)                                                                                                   \
    X(ActionsRowTrue)                                                                                                  \
    X(ActionsRowFalse)                                                                                                 \
    X(ActionsRowAgain)                                                                                                 \
    X(ModifyAllowAfterDecision)                                                                                        \
    X(ModifyActionTrue)                                                                                                \
    X(ModifyActionFalse)                                                                                               \
    X(ModifyNoRow)                                                                                                     \
    X(ModifyOtherMode)                                                                                                 \
    X(ModifyFlagged)                                                                                                   \
    X(ModifyBlockStaysUnderFlag)                                                                                       \
    X(ModifyBlockBecameAllow)                                                                                          \
    X(ReportNoSink)                                                                                                    \
    X(ReportEmergency)                                                                                                 \
    X(ReportDisconnect)                                                                                                \
    X(ReportSystemProcess)                                                                                             \
    X(ReportProcessNotFound)                                                                                           \
    X(ReportOfMatchedRule)                                                                                             \
    X(ReportOfSeveralRules)                                                                                            \
    X(ReportBlock)                                                                                                     \
    X(ReportAllow)                                                                                                     \
    X(ReportBlockModified)                                                                                             \
    X(TextAbsent)                                                                                                      \
    X(TextSizeNotPositive)                                                                                             \
    X(TextSecondCallFailed)                                                                                            \
    X(TextWithoutNul)                                                                                                  \
    X(TextNulBeforeEnd)                                                                                                \
    X(NumberFailed)                                                                                                    \
    X(NumberFailedButWritten)                                                                                          \
    X(LongNumberFailed)

enum class Branch : size_t {
#define MODEL_BRANCH_NAME(name) name,
    MODEL_BRANCHES(MODEL_BRANCH_NAME)
#undef MODEL_BRANCH_NAME
        Count
};

class BranchCounts {
public:
    void Add(Branch branch) { ++m_counts[static_cast<size_t>(branch)]; }
    void Add(const BranchCounts& other);
    uint64_t operator[](Branch branch) const { return m_counts[static_cast<size_t>(branch)]; }

    // The branches that were taken less often than `floor`, one a line with their counts; empty when there are none.
    std::string Starved(uint64_t floor) const;

    // All branches with their counts, one a line.
    std::string Table() const;

private:
    std::array<uint64_t, static_cast<size_t>(Branch::Count)> m_counts{};
};

} // namespace model
