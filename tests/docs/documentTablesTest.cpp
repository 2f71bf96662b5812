// Runs each row of the document tables in docs/documents.md through the library.
#include <algorithm>
#include <functional>

#include "docs/markdown.h"
#include "docs/sourceTree.h"
#include "kit/host/receiverFixture.h"

namespace {

using docs::Row;
using docs::Span;

class DocumentTables : public kit::ReceiverFixture {
protected:
    void SetUp() override {
        ReceiverFixture::SetUp();
        StartLogging();
    }

    // The rows below a heading. Fewer than `least` rows fail the test, so a missing table fails too.
    std::vector<Row> Rows(const std::string& heading, size_t least) {
        std::vector<Row> rows = docs::Table(docs::ReadText(docs::InTree("docs/documents.md")), heading);
        EXPECT_GE(rows.size(), least);
        return rows;
    }

    static bool Yes(const std::string& cell) {
        EXPECT_TRUE(cell == "true" || cell == "false" || cell == "yes" || cell == "no") << cell;
        return cell == "true" || cell == "yes";
    }

    // The masked records that a cell such as "TRACE `a`, ERROR `b`" lists.
    static std::vector<std::string> Records(const std::string& site, const std::string& cell) {
        std::vector<std::string> records;
        size_t end = 0;
        for (const std::string& message : docs::Spans(cell)) {
            const size_t begin = cell.find('`', end);
            const std::string level = cell.substr(end, begin - end);
            end = begin + message.size() + 2;
            const bool isError = level.find("ERROR") != std::string::npos;
            EXPECT_NE(isError, level.find("TRACE") != std::string::npos) << cell;
            records.push_back(isError ? kit::Error(site, message) : kit::Trace(site, message));
        }
        EXPECT_EQ(records.empty(), cell == "none") << cell;
        return records;
    }

    template <typename Map, typename Text>
    static std::string Join(const Map& map, Text text) {
        std::string joined;
        for (const auto& entry : map) {
            joined += (joined.empty() ? "" : "; ") + text(entry);
        }
        return joined;
    }

    template <typename Mids>
    static std::string Entry(const std::string& key, const Mids& mids) {
        std::vector<std::string> sorted(mids.begin(), mids.end());
        std::sort(sorted.begin(), sorted.end());
        std::string text = key + ": ";
        for (size_t i = 0; i < sorted.size(); ++i) {
            text += (i == 0 ? "" : " ") + sorted[i];
        }
        return text;
    }
};

TEST_F(DocumentTables, ParseErrorsHaveTheListedCodeAndOffset) {
    for (const Row& row : Rows("Parse errors", 14)) {
        SCOPED_TRACE(row[2]);
        EXPECT_FALSE(receiver->SetAllowList(Span(row[2]).c_str()));
        const std::string site = "allowList.cpp CMordRecv::SetAllowList";
        const std::vector<std::string> expected{kit::Error(site, "error_code" + row[0] + "error_offset" + row[3]),
                                                kit::Trace(site, "parse allow list, ret0")};
        EXPECT_EQ(TakeRecords(), expected);
    }
}

TEST_F(DocumentTables, AllowListMatchesTheTable) {
    for (const Row& row : Rows("Allow list: what a document does", 20)) {
        SCOPED_TRACE(row[0]);
        ASSERT_TRUE(receiver->SetAllowList(R"({"mid_list": [{"mid": "M0", "protocol": ["old"]}]})"));
        TakeRecords();

        const bool result = receiver->SetAllowList(Span(row[0]).c_str());

        EXPECT_EQ(result, Yes(row[1]));
        const std::string site = "allowList.cpp CMordRecv::SetAllowList";
        std::vector<std::string> expected = Records(site, row[2]);
        expected.push_back(kit::Trace(site, result ? "parse allow list, ret1" : "parse allow list, ret0"));
        EXPECT_EQ(TakeRecords(), expected);
        EXPECT_EQ(Join(Fields().AllowedMids(), [](const auto& entry) { return Entry(entry.first, entry.second); }),
                  Span(row[3]));
    }
}

TEST_F(DocumentTables, ActionTableMatchesTheTable) {
    for (const Row& row : Rows("Action table: what a document does", 15)) {
        SCOPED_TRACE(row[0]);
        ASSERT_TRUE(receiver->ParseActionJson(R"({"old": 1})"));
        TakeRecords();

        const bool result = receiver->ParseActionJson(Span(row[0]).c_str());

        EXPECT_EQ(result, Yes(row[1]));
        const std::string site = "actionTable.cpp CMordRecv::ParseActionJson";
        std::vector<std::string> expected = Records(site, row[2]);
        expected.push_back(kit::Trace(site, result ? "type action parse ret=1" : "type action parse ret=0"));
        EXPECT_EQ(TakeRecords(), expected);
        EXPECT_EQ(
            Join(Fields().Actions(), [](const auto& entry) { return entry.first + (entry.second ? "=1" : "=0"); }),
            Span(row[3]));
    }
}

TEST_F(DocumentTables, QueryResultMatchesTheTable) {
    for (const Row& row : Rows("Query result: what a document does", 18)) {
        SCOPED_TRACE(row[0]);
        QueryResultTable table;

        EXPECT_EQ(receiver->ParseQueryResult(Span(row[0]), &table), Yes(row[1]));

        EXPECT_EQ(TakeRecords(), Records("queryResult.cpp CMordRecv::ParseQueryResult", row[2]));
        std::map<std::string, std::set<std::string>> rules;
        for (const char* guid : {"A", "B", "C"}) {
            if (const MidSet* const mids = table.Find(guid)) {
                rules[guid] = kit::TextsOf(*mids);
            }
        }
        EXPECT_EQ(rules.size(), table.Size());
        EXPECT_EQ(Join(rules, [](const auto& entry) { return Entry(entry.first, entry.second); }), Span(row[3]));
    }
}

} // namespace
