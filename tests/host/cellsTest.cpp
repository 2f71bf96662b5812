#include "output/cells.h"

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

Policy PolicyOfTypes(const std::vector<std::string>& types) {
    Policy policy;
    for (const std::string& type : types) {
        policy.rules.push_back({"G", type, {}, {}, {}});
    }
    return policy;
}

std::string Cell(const Decision& decision, Column column, const Policy& policy = {}) {
    return CellsOf(decision, policy)[static_cast<size_t>(column)];
}

std::string RulesCell(const std::vector<std::string>& types) {
    Decision decision;
    for (size_t i = 0; i < types.size(); ++i) {
        decision.rules.push_back(i);
    }
    return Cell(decision, Column::rules, PolicyOfTypes(types));
}

} // namespace

TEST(Cells, AnEndIsAddressAndPort) {
    EXPECT_EQ(EndText("127.0.0.1", 445), "127.0.0.1:445");
    EXPECT_EQ(EndText("::1", 445), "[::1]:445");
    EXPECT_EQ(EndText("127.0.0.1", {}), "127.0.0.1:-");
    EXPECT_EQ(EndText({}, 445), "-:445");
}

TEST(Cells, AProcessIsItsFileNameOrItsId) {
    Decision decision;
    EXPECT_EQ(Cell(decision, Column::process), "-");
    decision.event.pid = 7;
    EXPECT_EQ(Cell(decision, Column::process), "pid 7");
    decision.process = "c:\\dir/a\\b.exe";
    EXPECT_EQ(Cell(decision, Column::process), "b.exe");
    decision.process = "System";
    EXPECT_EQ(Cell(decision, Column::process), "System");
}

TEST(Cells, RulesAreShownByTheirTypes) {
    EXPECT_EQ(RulesCell({}), "-");
    EXPECT_EQ(RulesCell({"smb"}), "smb");
    EXPECT_EQ(RulesCell({"web", "smb", "web", "ssh", "web"}), "web x3, smb, ssh");
    EXPECT_EQ(RulesCell({""}), "\"\"");
}

TEST(Cells, NothingInARowSteersATerminal) {
    EXPECT_EQ(Printable("a\x1b[31mb\nc\x7F\td"), "a?[31mb?c??d");
    EXPECT_EQ(Printable("\xC2\x9B"
                        "31m"),
              "?31m")
        << "the same in one character";
    EXPECT_EQ(Printable("\xC3\xA4\xC2\xA0\xE2\x82\xAC"), "\xC3\xA4\xC2\xA0\xE2\x82\xAC");
    EXPECT_EQ(RulesCell({"\x1b]0;x\a"}), "?]0;x?");
}

TEST(Cells, WidthCountsCharacters) {
    EXPECT_EQ(WidthOf(""), 0U);
    EXPECT_EQ(WidthOf("abc"), 3U);
    EXPECT_EQ(WidthOf("\xC3\xA4\xE2\x82\xAC"), 2U);
}
