// The last word on a reply: by mode, action and flags.
#include "unit/mordRev/decisionFixture.h"

using namespace kit;

namespace {

class ReplyRewrite : public DecisionFixture {
protected:
    void SetUp() override {
        DecisionFixture::SetUp();
        Fields().Actions() = {{"LET-THROUGH", true}, {"NOT", false}};
    }

    // What becomes of `before`.
    Verdict Rewrite(uint32_t mode, uint32_t before, const std::string& type, uint32_t flags) {
        Fields().Mode() = mode;
        Verdict verdict{false, before};
        verdict.result = receiver->ModiyReply(type, flags, &verdict.reply);
        return verdict;
    }

    // One row of the table, without and with the flag, under flags that mean nothing besides.
    void ExpectRow(uint32_t mode, uint32_t before, const std::string& type, uint32_t after, bool result) {
        const uint32_t flagged = after == REPLY_ALLOW ? static_cast<uint32_t>(REPLY_ALLOW_FLAGGED) : after;
        for (const uint32_t flags : {0U, 0x04U, 0xFFFFFFEFU}) {
            EXPECT_EQ(Rewrite(mode, before, type, flags), (Verdict{result, after}));
            EXPECT_EQ(Rewrite(mode, before, type, flags | EVENT_FLAG_REPLY_TWO), (Verdict{result, flagged}));
        }
    }

    const Lines actions{"LET-THROUGH", "NOT", "NO-ROW", ""};
    const std::vector<uint32_t> otherModes{0, 1, 2, 5, 6, 77, 0xFFFFFFFF};
};

TEST_F(ReplyRewrite, AllowAfterDecisionTurnsABlockIntoAnAllowWhateverTheAction) {
    for (const std::string& type : actions) {
        ExpectRow(MODE_ALLOW_AFTER_DECISION, REPLY_BLOCK, type, REPLY_ALLOW, true);
    }
}

TEST_F(ReplyRewrite, AllowAfterDecisionLeavesAnAllowUnmodified) {
    for (const std::string& type : actions) {
        ExpectRow(MODE_ALLOW_AFTER_DECISION, REPLY_ALLOW, type, REPLY_ALLOW, false);
    }
}

TEST_F(ReplyRewrite, ActionTableTurnsABlockIntoAnAllowWhereTheActionIsTrue) {
    ExpectRow(MODE_ACTION_TABLE, REPLY_BLOCK, "LET-THROUGH", REPLY_ALLOW, true);
}

TEST_F(ReplyRewrite, ActionTableLeavesABlockWhereTheActionIsFalseOrHasNoRow) {
    ExpectRow(MODE_ACTION_TABLE, REPLY_BLOCK, "NOT", REPLY_BLOCK, false);
    ExpectRow(MODE_ACTION_TABLE, REPLY_BLOCK, "NO-ROW", REPLY_BLOCK, false);
}

TEST_F(ReplyRewrite, ActionTableNeverBlocksAnAllow) {
    for (const std::string& type : actions) {
        ExpectRow(MODE_ACTION_TABLE, REPLY_ALLOW, type, REPLY_ALLOW, false);
    }
}

TEST_F(ReplyRewrite, OtherModesLeaveABlock) {
    for (const uint32_t mode : otherModes) {
        for (const std::string& type : actions) {
            ExpectRow(mode, REPLY_BLOCK, type, REPLY_BLOCK, false);
        }
    }
}

TEST_F(ReplyRewrite, OtherModesLeaveAnAllow) {
    for (const uint32_t mode : otherModes) {
        for (const std::string& type : actions) {
            ExpectRow(mode, REPLY_ALLOW, type, REPLY_ALLOW, false);
        }
    }
}

TEST_F(ReplyRewrite, EmergencyWithReply1AndTheFlagGives2AndFalse) {
    EXPECT_EQ(Rewrite(MODE_EMERGENCY, REPLY_ALLOW, "NO-ROW", EVENT_FLAG_REPLY_TWO),
              (Verdict{false, REPLY_ALLOW_FLAGGED}));
}

TEST_F(ReplyRewrite, ABlockNeverTurnsInto2Directly) {
    EXPECT_EQ(Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, "NOT", EVENT_FLAG_REPLY_TWO), (Verdict{false, REPLY_BLOCK}));
}

TEST_F(ReplyRewrite, TheEmptyTypeFindsNoRow) {
    EXPECT_TRUE(receiver->ParseActionJson(R"({"":1,"TYPE-1":1})"));
    EXPECT_EQ(Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, "", 0), (Verdict{false, REPLY_BLOCK}));
}

TEST_F(ReplyRewrite, TypesAreComparedByteForByte) {
    for (const std::string& type : {std::string("let-through"), std::string("LET-THROUGH "), std::string("LET"),
                                    std::string("LET-THROUGH\0", 12)}) {
        EXPECT_EQ(Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, type, 0), (Verdict{false, REPLY_BLOCK}));
    }
}

TEST_F(ReplyRewrite, NullReplyGivesFalseAndLogsNothing) {
    for (const uint32_t mode : {0U, 3U, 4U, 5U}) {
        Fields().Mode() = mode;
        EXPECT_FALSE(receiver->ModiyReply("LET-THROUGH", EVENT_FLAG_REPLY_TWO, nullptr));
    }
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_F(ReplyRewrite, AllowAfterDecisionLogsTheMode) {
    Rewrite(MODE_ALLOW_AFTER_DECISION, REPLY_BLOCK, "TYPE-1", 0);
    Rewrite(MODE_ALLOW_AFTER_DECISION, REPLY_ALLOW, "TYPE-1", EVENT_FLAG_REPLY_TWO);
    EXPECT_EQ(TakeRecords(), (Lines{inModiyReply.Trace("defender mode=4"), inModiyReply.Trace("defender mode=4")}));
}

TEST_F(ReplyRewrite, ActionTableLogsTypeModeAndActionWhereTheActionIsTrue) {
    Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, "LET-THROUGH", 0);
    Rewrite(MODE_ACTION_TABLE, REPLY_ALLOW, "LET-THROUGH", EVENT_FLAG_REPLY_TWO);
    const std::string record = inModiyReply.Trace("type=LET-THROUGH,defender mode=3,action=1");
    EXPECT_EQ(TakeRecords(), (Lines{record, record}));
}

TEST_F(ReplyRewrite, ActionTableLogsNothingWhereTheActionIsFalseOrHasNoRow) {
    Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, "NOT", 0);
    Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, "NO-ROW", EVENT_FLAG_REPLY_TWO);
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_F(ReplyRewrite, OtherModesLogNothing) {
    for (const uint32_t mode : otherModes) {
        Rewrite(mode, REPLY_BLOCK, "LET-THROUGH", 0);
        Rewrite(mode, REPLY_ALLOW, "LET-THROUGH", EVENT_FLAG_REPLY_TWO);
    }
    EXPECT_EQ(TakeRecords(), Lines{});
}

TEST_F(ReplyRewrite, TheTableIsNotChanged) {
    Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, "NO-ROW", 0);
    EXPECT_EQ(Fields().Actions(), (ActionTable{{"LET-THROUGH", true}, {"NOT", false}}));
}

TEST_F(ReplyRewrite, TheLockIsFreeAfterwards) {
    for (const std::string& type : actions) {
        Rewrite(MODE_ACTION_TABLE, REPLY_BLOCK, type, 0);
        ASSERT_TRUE(Fields().Lock().try_lock());
        Fields().Lock().unlock();
    }
}

} // namespace
