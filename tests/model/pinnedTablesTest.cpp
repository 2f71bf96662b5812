// The allow list and the action table.
#include "model/pinnedCase.h"
#include "model/receiverModel.h"

namespace {

using namespace model;
using namespace std::string_literals;

const std::string good = R"({"mid_list":[{"mid":"a","protocol":["k","l"]},{"mid":"b","protocol":["l"]}]})";

class PinnedTables : public PinnedCase {
protected:
    void SetUp() override { Do(InitOf(2)); } // logs, without a host

    // The tables of the model after all steps.
    std::map<std::string, std::vector<std::string>> AllowList() {
        Hold();
        std::map<std::string, std::vector<std::string>> rows;
        for (const auto& [key, mids] : m_model->AllowList()) {
            rows[key].assign(mids.begin(), mids.end());
        }
        return rows;
    }
    std::map<std::string, bool> Actions() {
        Hold();
        return {m_model->Actions().begin(), m_model->Actions().end()};
    }

    using List = std::map<std::string, std::vector<std::string>>;
    using Table = std::map<std::string, bool>;

private:
    void Hold() {
        m_trace = Trace();
        m_siblings = m_case.siblings;
        m_model = std::make_unique<ReceiverModel>(m_trace, m_siblings, branches);
        for (const Operation& operation : m_case.operations) {
            if (operation.kind == OperationKind::SetAllowList) {
                m_model->SetAllowList(operation.text.c_str());
            } else if (operation.kind == OperationKind::ClearAllowList) {
                m_model->ClearAllowList();
            } else if (operation.key == 20) {
                m_model->ParseActionJson(operation.text.c_str());
            }
        }
    }

    Trace m_trace;
    SiblingState m_siblings;
    std::unique_ptr<ReceiverModel> m_model;
};

TEST_F(PinnedTables, AllowListMapsKeysToMids) {
    Do(AllowListOf(good));
    EXPECT_EQ(Seen(), (Lines{TraceOf("SetAllowList", "parse allow list, ret1"), "= true"}));
    EXPECT_EQ(AllowList(), (List{{"k", {"a"}}, {"l", {"a", "b"}}}));
}

TEST_F(PinnedTables, AcceptedListReplacesTheFormerOne) {
    Do(AllowListOf(good));
    Do(AllowListOf(R"({"mid_list":[{"protocol":["m","m"],"mid":""},{"mid":"","protocol":["m",""]}]})"));
    EXPECT_EQ(AllowList(), (List{{"m", {""}}, {"", {""}}}));
}

TEST_F(PinnedTables, RejectedListKeepsTheFormerOne) {
    Do(AllowListOf(good));
    for (const char* const text : {"", "  ", "{\"mid_list\":[}", "{\"mid_list\":[]} x"}) {
        Do(AllowListOf(text));
        const Lines seen = Seen();
        ASSERT_EQ(seen.size(), 3U);
        EXPECT_TRUE(seen[0].starts_with(ErrorOf("SetAllowList", "error_code"))) << seen[0];
        EXPECT_EQ(seen[1], TraceOf("SetAllowList", "parse allow list, ret0"));
        EXPECT_EQ(seen[2], "= false");
        EXPECT_EQ(AllowList(), (List{{"k", {"a"}}, {"l", {"a", "b"}}}));
    }
    for (const char* const text : {"{}", "[]", "1", "null", "\"mid_list\"", "{\"Mid_list\":[]}"}) {
        Do(AllowListOf(text));
        EXPECT_EQ(Seen(), (Lines{ErrorOf("SetAllowList", "format error"),
                                 TraceOf("SetAllowList", "parse allow list, ret0"), "= false"}));
        EXPECT_EQ(AllowList(), (List{{"k", {"a"}}, {"l", {"a", "b"}}}));
    }
}

TEST_F(PinnedTables, EmptyTextLogsTheErrorOfTheParser) {
    Do(AllowListOf(""));
    EXPECT_EQ(Seen()[0], ErrorOf("SetAllowList", "error_code1error_offset0"));
}

TEST_F(PinnedTables, MidListOtherThanAnArrayEmptiesTheList) {
    for (const char* const text : {"{\"mid_list\":1}", "{\"mid_list\":{}}", "{\"mid_list\":null}"}) {
        m_case = TestCase();
        Do(InitOf(2));
        Do(AllowListOf(good));
        Do(AllowListOf(text));
        EXPECT_EQ(Seen(), (Lines{TraceOf("SetAllowList", "mid list is empty"),
                                 TraceOf("SetAllowList", "parse allow list, ret1"), "= true"}));
        EXPECT_EQ(AllowList(), List());
    }
    Do(AllowListOf("{\"mid_list\":[]}"));
    EXPECT_EQ(Seen(), (Lines{TraceOf("SetAllowList", "parse allow list, ret1"), "= true"}));
}

TEST_F(PinnedTables, BadEntriesAndElementsAreSkipped) {
    Do(AllowListOf(
        R"({"mid_list":[1,null,"a",[],{"mid":"x"},{"protocol":["k"]},{"mid":1,"protocol":["k"]},)"
        R"({"mid":"x","protocol":"k"},{"mid":"x","protocol":[]},{"mid":"a","protocol":[1,"k",null,["l"]]}]})"));
    EXPECT_EQ(Seen().back(), "= true");
    EXPECT_EQ(AllowList(), (List{{"k", {"a"}}}));
}

TEST_F(PinnedTables, TextsOfTheListEndAtTheirFirstNul) {
    Do(AllowListOf(R"({"mid_list":[{"mid":"a\u0000b","protocol":["k\u0000l","\u0000"]}]})"));
    EXPECT_EQ(AllowList(), (List{{"k", {"a"}}, {"", {"a"}}}));
}

TEST_F(PinnedTables, FirstOfDuplicateMembersCounts) {
    Do(AllowListOf(R"({"mid_list":[{"mid":"a","mid":"b","protocol":["k"],"protocol":["l"]}],"mid_list":1})"));
    EXPECT_EQ(AllowList(), (List{{"k", {"a"}}}));
}

TEST_F(PinnedTables, ClearingAnEmptyListIsLogged) {
    Do(ClearingOf());
    EXPECT_EQ(Seen(), (Lines{TraceOf("ClearAllowList", "ClearAllowList_mids start"), "= true"}));
    Do(AllowListOf(good));
    Do(ClearingOf());
    EXPECT_EQ(AllowList(), List());
}

TEST_F(PinnedTables, ActionsKeepGoodRowsAndLogBadOnes) {
    Do(InitOf(0));
    Do(TextOf(20, R"({"a":1,"b":1.0,"":1,"c":0,"d":-1,"e":2147483648,"f":"1","a":0,"g\u0000h":2,"\u0000":1})"));
    EXPECT_EQ(Seen(),
              (Lines{ErrorOf("ParseActionJson", "key b format error"), ErrorOf("ParseActionJson", "key  format error"),
                     ErrorOf("ParseActionJson", "key e format error"), ErrorOf("ParseActionJson", "key f format error"),
                     ErrorOf("ParseActionJson", "key  format error"),
                     TraceOf("ParseActionJson", "type action parse ret=1"), "= true"}));
    EXPECT_EQ(Actions(), (Table{{"a", false}, {"c", false}, {"d", true}, {"g", true}}));
}

TEST_F(PinnedTables, MalformedActionsKeepTheTableAndInvalidOnesEmptyIt) {
    Do(InitOf(0));
    Do(TextOf(20, R"({"a":1})"));
    for (const char* const text : {" ", "{\"a\":1,}", "{} {}"}) {
        Do(TextOf(20, text));
        EXPECT_EQ(Seen(), (Lines{ErrorOf("ParseActionJson", "action json is invalid json format"),
                                 TraceOf("ParseActionJson", "type action parse ret=0"), "= false"}));
        EXPECT_EQ(Actions(), (Table{{"a", true}}));
    }
    for (const char* const text : {"{}", "[]", "null", "[{\"a\":1}]", "7", "\"a\""}) {
        Do(TextOf(20, R"({"a":1})"));
        Do(TextOf(20, text));
        EXPECT_EQ(Seen(), (Lines{ErrorOf("ParseActionJson", "action json is empty"),
                                 TraceOf("ParseActionJson", "type action parse ret=0"), "= false"}));
        EXPECT_EQ(Actions(), Table());
    }
}

TEST_F(PinnedTables, ModeActionAndFlagDetermineTheReply) {
    struct Row {
        uint32_t mode;
        uint32_t before;
        const char* type;
        uint32_t after;
        bool changed;
    };
    const Row rows[] = {{4, 0, "t", 1, true},   {4, 1, "t", 1, false}, {3, 0, "t", 1, true},  {3, 0, "f", 0, false},
                        {3, 0, "", 0, false},   {3, 1, "t", 1, false}, {3, 1, "f", 1, false}, {5, 0, "t", 0, false},
                        {77, 1, "t", 1, false}, {0, 0, "t", 0, false}};
    Trace trace;
    SiblingState siblings;
    ReceiverModel receiver(trace, siblings, branches);
    char byte = 0;
    ASSERT_TRUE(receiver.ParseActionJson(R"({"t":2,"f":0})"));
    EXPECT_FALSE(receiver.ModiyReply("t", 0, nullptr));
    EXPECT_FALSE(receiver.SetProperty(8, &byte, 4)); // no host yet
    for (const Row& row : rows) {
        Operation mode = NumberOf(8, row.mode);
        IDotHost* const anyHost = reinterpret_cast<IDotHost*>(&byte); // kept, never called
        ASSERT_TRUE(receiver.Init(anyHost));
        ASSERT_TRUE(receiver.SetProperty(8, &mode.number, 4));
        for (const int32_t flags : {0, 0x10}) {
            uint32_t reply = row.before;
            EXPECT_EQ(receiver.ModiyReply(row.type, flags, &reply), row.changed);
            EXPECT_EQ(reply, flags == 0x10 && row.after == 1 ? 2U : row.after) << row.mode << row.type << row.before;
        }
    }
}

} // namespace
