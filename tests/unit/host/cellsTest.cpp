#include "output/cells.h"

#include <gtest/gtest.h>

#include "output/boundedText.h"

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
    std::string text = "before ";
    const size_t width = AppendCell(text, column, decision, policy);
    EXPECT_EQ(text.rfind("before ", 0), 0U) << "it is written behind what is there";
    text.erase(0, std::string("before ").size());
    EXPECT_EQ(width, WidthOf(text));
    return text;
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
    const auto end = [](const std::optional<std::string>& address, std::optional<uint16_t> port) {
        Decision decision;
        decision.event.remoteAddress = decision.event.localAddress = address;
        decision.event.remotePort = decision.event.localPort = port;
        EXPECT_EQ(Cell(decision, Column::localEnd), Cell(decision, Column::remoteEnd));
        return Cell(decision, Column::remoteEnd);
    };
    EXPECT_EQ(end("127.0.0.1", 445), "127.0.0.1:445");
    EXPECT_EQ(end("::1", 445), "[::1]:445");
    EXPECT_EQ(end("127.0.0.1", {}), "127.0.0.1:-");
    EXPECT_EQ(end({}, 445), "-:445");
    EXPECT_EQ(end({}, {}), "-:-");
}

TEST(Cells, TheLongestEndIsNotTruncated) {
    Decision decision;
    decision.event.remoteAddress = "1111:2222:3333:4444:5555:6666:255.255.255.255";
    decision.event.remotePort = 65535;
    EXPECT_EQ(Cell(decision, Column::remoteEnd), "[1111:2222:3333:4444:5555:6666:255.255.255.255]:65535");
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

TEST(Cells, RulesOfATypeAreCountedAtAllPositions) {
    std::vector<std::string> types(1000, "web");
    types.emplace_back("smb");
    types.emplace_back("web");
    EXPECT_EQ(RulesCell(types), "web x1001, smb");
}

TEST(Cells, AWideCellIsTruncatedWithAnEllipsis) {
    Decision decision;
    decision.reason.text = std::string(160, 'r');
    EXPECT_EQ(Cell(decision, Column::reason), decision.reason.text);
    decision.reason.text += 'r';
    EXPECT_EQ(Cell(decision, Column::reason), std::string(159, 'r') + "\u2026");
    decision.process = "/usr/bin/" + std::string(33, 'p');
    EXPECT_EQ(Cell(decision, Column::process), std::string(31, 'p') + "\u2026");
}

TEST(Cells, TheCellOfManyRulesIsBounded) {
    std::vector<std::string> types;
    for (int i = 0; i < 20000; ++i) {
        types.push_back("type-" + std::to_string(i));
    }
    EXPECT_EQ(RulesCell(types), "type-0, type-1, type-2, type-3, type-4,\u2026");
    types.assign(20000, "");
    EXPECT_EQ(RulesCell(types), "\"\" x20000");
    EXPECT_EQ(RulesCell({std::string(100000, 't')}), std::string(39, 't') + "\u2026");
}

TEST(Cells, NoCellContainsControlCharacters) {
    EXPECT_EQ(RulesCell({"\x1b]0;x\a"}), "?]0;x?");
}
