// Memory that runs out: std::bad_alloc passes out of the operation, and everything is as it must be afterwards. Each
// allocation of each operation fails in turn, alone and for good.
#include <new>

#include "hostKit/decisionSamples.h"
#include "hostKit/receiverFixture.h"
#include "mordRev/allocations.h"
#include "mordRev/plainHost.h"
#include "mordRev/src/json.h"

namespace {

// Longer than any string keeps without an allocation.
const std::string longText = "a text that is too long to be kept without an allocation: ";

// How an operation ended of which an allocation failed.
struct Failure {
    bool thrown; // as std::bad_alloc
    AllocationKind kind;
    bool lasting;
};

// What the runtime itself has to allocate once, on Windows: the receiver's lock at its first use, and the lock of the
// reserve from which exceptions are taken when there is no memory for them. Without the latter the runtime cannot
// throw.
void WarmUp(std::timed_mutex& lock) {
    const std::lock_guard first(lock);
    try {
        const FailingAllocations failing(1, false);
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        return;
    }
}

class ExhaustedMemory : public hostKit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        MakeRunning();
        WarmUp(Fields().Lock());
        LogFileEnabled = false;
        Fields().Host() = &plainHost;
        Fields().ReportSink() = &plainSink;
        Fields().Mid() = longText + "mid";
        plainHost.answer = hostKit::AnswerText(longText + "guid", {longText + "1", longText + "2"});
    }

    // Lets each allocation of `operation` fail in turn. `before` puts everything into its first state; `after` is told
    // how the operation ended. The lock must be free then.
    template <typename Operation, typename Before, typename After>
    void Sweep(const Operation& operation, const Before& before, const After& after) {
        for (const bool lasting : {false, true}) {
            size_t nth = 1;
            for (; nth < 100000; ++nth) {
                before();
                bool thrown = false;
                FailingAllocations failing(nth, lasting);
                try {
                    operation();
                } catch (const std::bad_alloc&) {
                    thrown = true;
                }
                failing.Stop();
                if (failing.Failed() == AllocationKind::None) {
                    break;
                }
                SCOPED_TRACE("allocation " + std::to_string(nth) + (lasting ? " and all further" : " alone"));
                ASSERT_TRUE(Fields().Lock().try_lock());
                Fields().Lock().unlock();
                after(Failure{thrown, failing.Failed(), lasting});
            }
            EXPECT_GT(nth, 1U);
        }
    }

    // Without records every failure passes out, but that of the one allocation that must not throw.
    static void ExpectThrown(const Failure& failure) {
        if (failure.kind != AllocationKind::Calloc) {
            EXPECT_TRUE(failure.thrown);
        } else if (!failure.lasting) {
            EXPECT_FALSE(failure.thrown);
        }
    }

    bool Decide(uint32_t* reply) { return receiver->HandleEvent(&event, rules, 2, reply); }

    PlainHost plainHost;
    PlainSink plainSink;
    PlainRecord event{"", ""};
    PlainRecord first{longText + "other guid", longText + "type"};
    PlainRecord second{longText + "guid", longText + "type"};
    IEventRecord* rules[2] = {&first, &second};
};

class ExhaustedMemoryOfAllowList : public ExhaustedMemory {
protected:
    // `oldList` stays until the emptying; afterwards the list holds a part of `newList`.
    void SweepAndExpectAPartOfTheDocument() {
        Sweep([this] { receiver->SetAllowList(document.c_str()); }, [this] { Fields().AllowedMids() = oldList; },
              [this](const Failure& failure) {
                  const AllowList& list = Fields().AllowedMids();
                  if (!LogFileEnabled) {
                      ExpectThrown(failure);
                      ++(list == oldList ? failuresBefore : failuresAfter);
                  }
                  // The document's memory is all had before the table is touched.
                  if (failure.kind == AllocationKind::Malloc && !LogFileEnabled) {
                      EXPECT_EQ(list, oldList);
                  }
                  if (list != oldList) {
                      ExpectPartOfTheDocument(list);
                  }
              });
    }

    void ExpectPartOfTheDocument(const AllowList& list) {
        for (const auto& [key, mids] : list) {
            EXPECT_FALSE(mids.empty());
            ASSERT_TRUE(newList.contains(key)) << key;
            for (const std::string& mid : mids) {
                EXPECT_TRUE(newList.at(key).contains(mid)) << mid;
            }
        }
    }

    const std::string document = R"({"mid_list":[{"mid":")" + longText + R"(1","protocol":[")" + longText + R"(A",")" +
                                 longText + R"(B"]},{"mid":")" + longText + R"(2","protocol":[")" + longText +
                                 R"(B"]}]})";
    const AllowList oldList{{"OLD-KEY", {"OLD-MID"}}};
    const AllowList newList{{longText + "A", {longText + "1"}}, {longText + "B", {longText + "1", longText + "2"}}};
    size_t failuresBefore = 0; // the emptying
    size_t failuresAfter = 0;
};

TEST_F(ExhaustedMemoryOfAllowList, KeepsTheOldListWhereItFailsBeforeTheEmptyingAndNoEmptySetAfterwards) {
    SweepAndExpectAPartOfTheDocument();
    EXPECT_GT(failuresBefore, 5U);
    EXPECT_GT(failuresAfter, 5U);
    EXPECT_TRUE(receiver->SetAllowList(document.c_str()));
    EXPECT_EQ(Fields().AllowedMids(), newList);
}

TEST_F(ExhaustedMemoryOfAllowList, DoesNoHarmWithRecordsOnTheWay) {
    LogFileEnabled = true;
    SweepAndExpectAPartOfTheDocument();
    EXPECT_EQ(siblings.ConverterReferences(), 0);
    EXPECT_TRUE(receiver->SetAllowList(document.c_str()));
    EXPECT_EQ(Fields().AllowedMids(), newList);
}

TEST_F(ExhaustedMemoryOfAllowList, OfARefusedDocumentKeepsTheOldList) {
    const std::string refused = document + "x";
    Sweep([&] { receiver->SetAllowList(refused.c_str()); }, [this] { Fields().AllowedMids() = oldList; },
          [this](const Failure& failure) {
              ExpectThrown(failure);
              EXPECT_EQ(Fields().AllowedMids(), oldList);
          });
}

class ExhaustedMemoryOfActions : public ExhaustedMemory {
protected:
    void SweepAndExpectAPartOfTheDocument() {
        size_t failuresBefore = 0; // the emptying
        size_t failuresAfter = 0;
        Sweep([this] { receiver->SetProperty(PROP_ACTION_JSON, document.data(), 1); },
              [this] { Fields().Actions() = oldTable; },
              [&](const Failure& failure) {
                  const ActionTable& table = Fields().Actions();
                  if (!LogFileEnabled) {
                      ExpectThrown(failure);
                  }
                  ++(table == oldTable ? failuresBefore : failuresAfter);
                  for (const auto& [type, action] : table == oldTable ? newTable : table) {
                      EXPECT_TRUE(newTable.contains(type)) << type;
                  }
              });
        EXPECT_GT(failuresBefore, 5U);
        EXPECT_GT(failuresAfter, 2U);
        EXPECT_TRUE(receiver->ParseActionJson(document.c_str()));
        EXPECT_EQ(Fields().Actions(), newTable);
    }

    std::string document = R"({")" + longText + R"(1":1,")" + longText + R"(2":"bad",")" + longText + R"(3":0})";
    const ActionTable oldTable{{"OLD-TYPE", true}};
    const ActionTable newTable{{longText + "1", true}, {longText + "3", false}};
};

TEST_F(ExhaustedMemoryOfActions, KeepsTheOldTableWhereItFailsBeforeTheEmptying) {
    SweepAndExpectAPartOfTheDocument();
}

TEST_F(ExhaustedMemoryOfActions, DoesNoHarmWithRecordsOnTheWay) {
    LogFileEnabled = true;
    SweepAndExpectAPartOfTheDocument();
}

class ExhaustedMemoryOfEvents : public ExhaustedMemory {
protected:
    void SetUp() override {
        ExhaustedMemory::SetUp();
        Fields().AllowedMids() = list;
        Fields().Actions() = actions;
    }

    // Lets an event fail; whatever happens, the answer goes back, nothing of the object changes and the same event is
    // decided as it should be right afterwards.
    void SweepEvent(bool result, uint32_t reply) {
        uint32_t written = 0;
        int deletions = 0;
        Sweep([&] { Decide(&written); },
              [&] {
                  written = 77;
                  deletions = plainHost.deletions;
              },
              [&](const Failure& failure) {
                  if (!LogFileEnabled) {
                      ExpectThrown(failure);
                  }
                  EXPECT_EQ(plainHost.answersOut, 0);
                  EXPECT_LE(plainHost.deletions, deletions + 1);
                  EXPECT_TRUE(written == 77 || written <= REPLY_ALLOW_FLAGGED) << written;
                  EXPECT_EQ(Fields().AllowedMids(), list);
                  EXPECT_EQ(Fields().Actions(), actions);
                  EXPECT_EQ(Fields().Mid(), longText + "mid");
                  uint32_t next = 77;
                  EXPECT_EQ(Decide(&next), result);
                  EXPECT_EQ(next, reply);
                  siblings.TakeRecordTexts();
              });
    }

    const AllowList list{{longText + "type", {longText + "2"}}};
    const ActionTable actions{{longText + "other", true}};
};

TEST_F(ExhaustedMemoryOfEvents, LeavesNothingBehindWhereARuleMatches) {
    SweepEvent(true, REPLY_ALLOW);
}

TEST_F(ExhaustedMemoryOfEvents, LeavesNothingBehindWhereNoRuleMatches) {
    rules[1] = &first;
    SweepEvent(false, REPLY_BLOCK);
}

TEST_F(ExhaustedMemoryOfEvents, LeavesNothingBehindWhereTheAnswerCannotBeParsed) {
    plainHost.answer += "x";
    SweepEvent(false, REPLY_BLOCK);
}

TEST_F(ExhaustedMemoryOfEvents, LeavesNothingBehindOnANetworkErrorWithAnAnswer) {
    plainHost.queryCode = DOT_QUERY_NETWORK_ERROR;
    SweepEvent(true, REPLY_BLOCK);
}

TEST_F(ExhaustedMemoryOfEvents, LeavesNothingBehindOnAQueryErrorWithoutAnAnswer) {
    plainHost.queryCode = 1;
    plainHost.hasAnswer = false;
    SweepEvent(false, REPLY_BLOCK);
}

TEST_F(ExhaustedMemoryOfEvents, LeavesNothingBehindWithRecordsOnTheWay) {
    LogFileEnabled = true;
    SweepEvent(true, REPLY_ALLOW);
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

// The log's second record, of the answer, is the last thing before the branch.
TEST_F(ExhaustedMemoryOfEvents, AllForbidNeverGivesTheAnswerBackOnceItsRecordIsBegun) {
    LogFileEnabled = true;
    Fields().Mode() = MODE_ALL_FORBID;
    int before = 0;
    int within = 0;
    uint32_t reply = 77;
    Sweep([&] { Decide(&reply); },
          [&] {
              siblings.TakeRecordTexts();
              plainHost.answersOut = 0;
          },
          [&](const Failure&) {
              const bool reached = siblings.Records().size() >= 2;
              ++(reached ? within : before);
              EXPECT_EQ(plainHost.answersOut, reached ? 1 : 0);
          });
    EXPECT_GT(before, 10);
    EXPECT_GT(within, 10);
    EXPECT_EQ(plainHost.answersOut, 1);
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

// The buffer of a record's text is the one allocation whose failure is no exhausted memory but an absent value.
TEST_F(ExhaustedMemoryOfEvents, ATextWhoseBufferCannotBeHadIsEmptyAndTheEventIsDecided) {
    int absent = 0;
    uint32_t reply = 77;
    Sweep([&] { Decide(&reply); }, [&] { reply = 77; },
          [&](const Failure& failure) {
              if (failure.kind == AllocationKind::Calloc && !failure.lasting) {
                  ++absent;
                  EXPECT_FALSE(failure.thrown);
                  EXPECT_LE(reply, REPLY_ALLOW);
              }
          });
    // The type of the first rule; both guids for the request; guid and type of each rule for the decision; guid, type
    // and two addresses for the report.
    EXPECT_EQ(absent, 11);
}

TEST_F(ExhaustedMemory, OfMatchingReleasesTheLockAndLeavesTheOutput) {
    const AllowList list{{longText + "type", {longText + "2"}}};
    Fields().AllowedMids() = list;
    std::string output = "before";
    Sweep(
        [&] {
            receiver->IsMatchmid(longText + "type", {longText + "2", longText + "1"}, &output);
        },
        [&] { output = "before"; },
        [&](const Failure& failure) {
            ExpectThrown(failure);
            EXPECT_EQ(output, "before");
            EXPECT_EQ(Fields().AllowedMids(), list);
        });
}

TEST_F(ExhaustedMemory, OfParsingAnAnswerLeavesWholeEntriesAlone) {
    const std::string text = R"({")" + longText + R"(A":{"value":1,"mid":{")" + longText + R"(1":1,")" + longText +
                             R"(2":1}},")" + longText + R"(B":{"value":1,"mid":{")" + longText + R"(3":1}}})";
    QueryResultTable table;
    Sweep([&] { receiver->ParseQueryResult(text, &table); }, [&] { table = {}; },
          [&](const Failure& failure) {
              ExpectThrown(failure);
              EXPECT_LE(table.Size(), 1U);
              const MidSet* const entry = table.Find(longText + "A");
              EXPECT_EQ(entry != nullptr, table.Size() == 1);
              if (entry != nullptr) {
                  EXPECT_EQ(*entry, (MidSet{longText + "1", longText + "2"}));
              }
          });
}

// The lock too is used for the first time here, for which some systems allocate.
TEST_F(ExhaustedMemory, OfTheFirstOperationOfAReceiverIsBadAllocAndNothingElse) {
    const std::string document = hostKit::AllowText(longText + "mid", {longText + "type"});
    size_t nth = 1;
    for (; nth < 100; ++nth) {
        SCOPED_TRACE("allocation " + std::to_string(nth));
        CMordRecv fresh;
        std::string thrown = "nothing";
        FailingAllocations failing(nth, false);
        try {
            fresh.SetAllowList(document.c_str());
        } catch (const std::bad_alloc&) {
            thrown = "std::bad_alloc";
        } catch (const std::exception& other) {
            thrown = other.what();
        }
        failing.Stop();
        if (failing.Failed() == AllocationKind::None) {
            break;
        }
        EXPECT_EQ(thrown, "std::bad_alloc");
        EXPECT_TRUE(fresh.SetAllowList(document.c_str()));
    }
    EXPECT_GT(nth, 5U);
}

TEST_F(ExhaustedMemory, OfTheParserIsThrownAndTheOldBlockStays) {
    JsonAllocator allocator;
    auto* const block = static_cast<char*>(allocator.Malloc(4));
    ASSERT_NE(block, nullptr);
    block[0] = 'x';
    {
        const FailingAllocations failing(1, true);
        EXPECT_THROW(allocator.Malloc(4), std::bad_alloc);
        EXPECT_THROW(allocator.Realloc(block, 4, 400), std::bad_alloc);
        EXPECT_EQ(allocator.Malloc(0), nullptr);
    }
    EXPECT_EQ(block[0], 'x');
    auto* const moved = static_cast<char*>(allocator.Realloc(block, 4, 400));
    ASSERT_NE(moved, nullptr);
    EXPECT_EQ(moved[0], 'x');
    EXPECT_EQ(allocator.Realloc(moved, 400, 0), nullptr);
    JsonAllocator::Free(nullptr);
}

} // namespace
