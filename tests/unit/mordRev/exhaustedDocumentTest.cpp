// Memory that runs out while a document is read: which rows stand afterwards.
#include "unit/mordRev/exhaustedReceiver.h"

namespace {

using namespace exhausted;

class ExhaustedAllowList : public ExhaustedMemory {
protected:
    // The old list stays until the emptying; afterwards the list holds a part of the new one.
    void SweepAndExpectAPartOfTheDocument() {
        size_t failuresBefore = 0; // the emptying
        size_t failuresAfter = 0;
        Sweep([this] { receiver->SetAllowList(document.c_str()); }, [this] { SetTheOldList(); },
              [&](const Failure& failure) {
                  const AllowTable& list = Fields().AllowedMids();
                  ++(list == oldList ? failuresBefore : failuresAfter);
                  if (!LogFileEnabled) {
                      ExpectThrown(failure);
                  }
                  // The document's memory is all had before the table is touched.
                  if (failure.kind == kit::AllocationKind::Malloc && !LogFileEnabled) {
                      EXPECT_EQ(list, oldList);
                  }
                  if (list != oldList) {
                      ExpectPartOfTheDocument(list);
                  }
                  ExpectTheKnownEventDecided();
              });
        EXPECT_GT(failuresBefore, 5U);
        EXPECT_GT(failuresAfter, 5U);
        EXPECT_TRUE(receiver->SetAllowList(document.c_str()));
        EXPECT_EQ(Fields().AllowedMids(), newList);
        ExpectTheKnownEventDecided();
    }

    void ExpectPartOfTheDocument(const AllowTable& list) {
        for (const auto& [key, mids] : list) {
            EXPECT_FALSE(mids.empty());
            ASSERT_TRUE(newList.contains(key)) << key;
            for (const std::string& mid : mids) {
                EXPECT_TRUE(newList.at(key).contains(mid)) << mid;
            }
        }
    }

    // Without records on the way, which may fail by themselves.
    void SetTheOldList() {
        const bool logs = std::exchange(LogFileEnabled, false);
        EXPECT_TRUE(receiver->SetAllowList(R"({"mid_list":[{"mid":"OLD-MID","protocol":["OLD-KEY"]}]})"));
        LogFileEnabled = logs;
    }

    const std::string document = R"({"mid_list":[{"mid":")" + longText + R"(1","protocol":[")" + longText + R"(A",")" +
                                 longText + R"(type"]},{"mid":")" + longText + R"(2","protocol":[")" + longText +
                                 R"(type"]}]})";
    const AllowTable oldList{{"OLD-KEY", {"OLD-MID"}}};
    const AllowTable newList{{longText + "A", {longText + "1"}}, {longText + "type", {longText + "1", longText + "2"}}};
};

TEST_F(ExhaustedAllowList, KeepsTheOldListWhereItFailsBeforeTheEmptyingAndNoEmptySetAfterwards) {
    SweepAndExpectAPartOfTheDocument();
}

TEST_F(ExhaustedAllowList, DoesNoHarmWithRecordsOnTheWay) {
    LogFileEnabled = true;
    SweepAndExpectAPartOfTheDocument();
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

TEST_F(ExhaustedAllowList, OfARefusedDocumentKeepsTheOldList) {
    for (const bool logs : {false, true}) {
        LogFileEnabled = logs;
        for (const std::string& refused : {document + "x", std::string("{}"), "[\"" + longText + "\"]"}) {
            Sweep([&] { receiver->SetAllowList(refused.c_str()); }, [this] { SetTheOldList(); },
                  [this](const Failure& failure) {
                      if (!LogFileEnabled) {
                          ExpectThrown(failure);
                      }
                      EXPECT_EQ(Fields().AllowedMids(), oldList);
                      ExpectTheKnownEventDecided();
                  });
        }
    }
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

TEST_F(ExhaustedAllowList, OfAListThatIsNoArrayKeepsTheOldListOrHasNone) {
    LogFileEnabled = true;
    Sweep([&] { receiver->SetAllowList(R"({"mid_list":1})"); }, [this] { SetTheOldList(); },
          [this](const Failure&) {
              EXPECT_TRUE(Fields().AllowedMids() == oldList || Fields().AllowedMids().empty());
              ExpectTheKnownEventDecided();
          });
}

// The record comes first: where it fails the list stays.
TEST_F(ExhaustedAllowList, OfTheClearingKeepsTheListWhereItThrows) {
    LogFileEnabled = true;
    Sweep([&] { receiver->ClearAllowList(); }, [this] { SetTheOldList(); },
          [this](const Failure& failure) {
              EXPECT_EQ(Fields().AllowedMids(), failure.thrown ? oldList : AllowTable());
              ExpectTheKnownEventDecided();
          });
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

class ExhaustedActions : public ExhaustedMemory {
protected:
    void SweepAndExpectAPartOfTheDocument() {
        size_t failuresBefore = 0; // the emptying
        size_t failuresAfter = 0;
        Sweep([this] { receiver->SetProperty(PROP_ACTION_JSON, document.data(), 1); }, [this] { SetTheOldTable(); },
              [&](const Failure& failure) {
                  const ActionTable& table = Fields().Actions();
                  if (!LogFileEnabled) {
                      ExpectThrown(failure);
                  }
                  ++(table == oldTable ? failuresBefore : failuresAfter);
                  for (const auto& [type, action] : table == oldTable ? newTable : table) {
                      ASSERT_TRUE(newTable.contains(type)) << type;
                      EXPECT_EQ(action, newTable.at(type)) << type;
                  }
                  ExpectTheKnownEventDecided();
              });
        EXPECT_GT(failuresBefore, 5U);
        EXPECT_GT(failuresAfter, 2U);
        EXPECT_TRUE(receiver->ParseActionJson(document.c_str()));
        EXPECT_EQ(Fields().Actions(), newTable);
        ExpectTheKnownEventDecided();
    }

    void SetTheOldTable() {
        const bool logs = std::exchange(LogFileEnabled, false);
        EXPECT_TRUE(receiver->ParseActionJson(R"({"OLD-TYPE":1})"));
        LogFileEnabled = logs;
    }

    std::string document = R"({")" + longText + R"(type":1,")" + longText + R"(2":"bad",")" + longText + R"(3":0})";
    const ActionTable oldTable{{"OLD-TYPE", true}};
    const ActionTable newTable{{longText + "type", true}, {longText + "3", false}};
};

TEST_F(ExhaustedActions, KeepsTheOldTableWhereItFailsBeforeTheEmptying) {
    SweepAndExpectAPartOfTheDocument();
}

TEST_F(ExhaustedActions, DoesNoHarmWithRecordsOnTheWay) {
    LogFileEnabled = true;
    SweepAndExpectAPartOfTheDocument();
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

TEST_F(ExhaustedActions, OfARefusedDocumentKeepsTheOldTable) {
    for (const bool logs : {false, true}) {
        LogFileEnabled = logs;
        std::string refused = document + "x";
        Sweep([&] { receiver->SetProperty(PROP_ACTION_JSON, refused.data(), 1); }, [this] { SetTheOldTable(); },
              [this](const Failure&) {
                  EXPECT_EQ(Fields().Actions(), oldTable);
                  ExpectTheKnownEventDecided();
              });
    }
}

TEST_F(ExhaustedActions, OfADocumentWithoutARowKeepsTheOldTableOrHasNone) {
    LogFileEnabled = true;
    for (std::string text : {std::string("{}"), std::string("[]"), R"({")" + longText + R"(":null})"}) {
        Sweep([&] { receiver->SetProperty(PROP_ACTION_JSON, text.data(), 1); }, [this] { SetTheOldTable(); },
              [this](const Failure&) {
                  EXPECT_TRUE(Fields().Actions() == oldTable || Fields().Actions().empty());
                  ExpectTheKnownEventDecided();
              });
    }
}

} // namespace
