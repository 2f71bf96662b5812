// Where the parts of a policy are in its files.
#include <gtest/gtest.h>

#include "policy/policyReader.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;

namespace {

// "LINE:COLUMN POINTER"
std::string TextOf(const DocumentPlace& place) {
    return std::to_string(place.where.line) + ':' + std::to_string(place.where.column) + ' ' + place.pointer;
}

Policy PolicyFrom(const std::string& text) {
    const TemporaryDirectory directory;
    return ReadPolicy(directory.Write("p.json", text));
}

// The entries of an allow list, each as "MID under KEY".
std::string EntriesOf(const std::string& text) {
    const JsonDocument document(SourceText("a.json", text));
    std::string entries;
    for (const AllowListEntry& entry : ReadAllowListEntries(document, document.Root())) {
        entries += (entries.empty() ? "" : "; ") + entry.mid + " under " + entry.key;
    }
    return entries;
}

std::string RowsOf(const std::string& text) {
    const JsonDocument document(SourceText("a.json", text));
    std::string rows;
    for (const ActionRow& row : ReadActionRows(document, document.Root())) {
        rows += (rows.empty() ? "" : "; ") + row.type + "=" + std::to_string(row.action);
    }
    return rows;
}

} // namespace

TEST(PolicyPlaces, EachPartKnowsItsPlace) {
    const Policy policy = PolicyFrom(R"({"rules": [
  {"guid": "A", "type": "x"},
  {"guid": "B", "type": "y"}],
 "allow_list": {"mid_list": [{"mid": "M1", "protocol": ["x", "y"]}]},
 "actions": {"x": 1,
             "a/b": 0},
 "dots": {"A": [], "B": ["M"]}})");
    ASSERT_EQ(policy.rules.size(), 2U);
    EXPECT_EQ(TextOf(policy.rules[1].place), "3:3 /rules/1");
    ASSERT_EQ(policy.allowListEntries.size(), 2U);
    EXPECT_EQ(policy.allowListEntries[1].mid, "M1");
    EXPECT_EQ(policy.allowListEntries[1].key, "y");
    EXPECT_EQ(TextOf(policy.allowListEntries[1].keyPlace), "4:62 /allow_list/mid_list/0/protocol/1");
    EXPECT_EQ(TextOf(policy.allowListEntries[1].midPlace), "4:38 /allow_list/mid_list/0/mid");
    ASSERT_EQ(policy.actionRows.size(), 2U);
    EXPECT_EQ(TextOf(policy.actionRows[1].place), "6:14 /actions/a~1b");
    EXPECT_EQ(TextOf(policy.dotPlaces.at("B")), "7:20 /dots/B");
}

TEST(PolicyPlaces, APartInAFileHasThePlaceInThatFile) {
    const TemporaryDirectory directory;
    directory.Write("allow.json", "{\"mid_list\":\n [{\"mid\": \"M\", \"protocol\": [\"x\"]}]}");
    directory.Write("actions.json", "{\"x\": 1}");
    directory.Write("dots.json", "\n{\"A\": []}");
    const Policy policy = ReadPolicy(directory.Write(
        "p.json", R"({"rules": [], "allow_list": "allow.json", "actions": "actions.json", "dots": "dots.json"})"));
    const DocumentPlace& key = policy.allowListEntries.at(0).keyPlace;
    EXPECT_EQ(key.where.file, directory.Name("allow.json"));
    EXPECT_EQ(TextOf(key), "2:29 /mid_list/0/protocol/0");
    EXPECT_EQ(TextOf(policy.actionRows.at(0).place), "1:2 /x");
    EXPECT_EQ(TextOf(policy.dotPlaces.at("A")), "2:2 /A");
    EXPECT_EQ(policy.dotPlaces.at("A").where.file, directory.Name("dots.json"));
}

TEST(PolicyPlaces, AllowListEntriesAreThoseThatTheLibraryTakes) {
    EXPECT_EQ(EntriesOf(R"({"mid_list": [{"mid": "M1", "protocol": ["A", 1, null, "B"]}, 7, {"mid": "M2"}]})"),
              "M1 under A; M1 under B");
    EXPECT_EQ(EntriesOf(R"({"mid_list": [{"mid": "M\u00001", "protocol": ["A\u0000B"]}]})"), "M under A");
    EXPECT_EQ(EntriesOf(R"({"mid_list": [{"mid": "M", "mid": 1, "protocol": ["A"], "protocol": []}]})"), "M under A");
    EXPECT_EQ(EntriesOf(R"({"mid_list": [{"mid": 1, "mid": "M", "protocol": ["A"]}]})"), "");
    EXPECT_EQ(EntriesOf(R"({"mid_list": [{"mid": "M", "protocol": "A"}]})"), "");
    EXPECT_EQ(EntriesOf(R"({"mid_list": 1})"), "");
    EXPECT_EQ(EntriesOf(R"([])"), "");
}

TEST(PolicyPlaces, ActionRowsAreThoseThatTheLibraryTakes) {
    EXPECT_EQ(RowsOf(R"({"A": 1, "A": 0, "B": -1, "A": "0"})"), "A=1; A=0; B=-1");
    EXPECT_EQ(RowsOf(R"({"A\u0000B": 1, "": 1, "\u0000": 1})"), "A=1");
    EXPECT_EQ(RowsOf(R"({"A": 2147483648, "B": 1.0, "C": 1e0, "D": true, "E": -2147483648})"), "E=-2147483648");
    EXPECT_EQ(RowsOf(R"([{"A": 1}])"), "");
}
