// Compares the table of messages in docs/documents.md with the log sites of the sources.
#include <algorithm>

#include <gtest/gtest.h>

#include "docs/markdown.h"
#include "docs/sourceTree.h"

namespace {

// Site and row begin with the same literal.
struct Message {
    std::string level;
    std::string text;
};

bool Match(const Message& site, const Message& row) {
    return site.level == row.level && row.text.starts_with(site.text);
}

std::vector<Message> LogSites() {
    std::vector<Message> sites;
    for (const auto& file : docs::FilesBelow("src", ".cpp")) {
        const std::string text = docs::ReadText(file);
        for (const std::string level : {"TRACE", "ERROR"}) {
            const std::string opening = "LOG_" + level + "(WIDE(\"";
            for (size_t at = text.find(opening); at != std::string::npos; at = text.find(opening, at + 1)) {
                const size_t begin = at + opening.size();
                sites.push_back({level, text.substr(begin, text.find('"', begin) - begin)});
            }
        }
    }
    return sites;
}

std::vector<Message> Rows() {
    std::vector<Message> rows;
    for (const docs::Row& row : docs::Table(docs::ReadText(docs::InTree("docs/documents.md")), "Messages")) {
        rows.push_back({row[1], docs::Span(row[2])});
    }
    return rows;
}

TEST(MessageTable, HasEveryLoggedMessage) {
    const std::vector<Message> rows = Rows();
    const std::vector<Message> sites = LogSites();
    EXPECT_GE(sites.size(), 40U);
    for (const Message& site : sites) {
        EXPECT_TRUE(std::any_of(rows.begin(), rows.end(), [&](const Message& row) { return Match(site, row); }))
            << site.level << " " << site.text;
    }
}

TEST(MessageTable, HasOnlyLoggedMessages) {
    const std::vector<Message> sites = LogSites();
    for (const Message& row : Rows()) {
        EXPECT_TRUE(std::any_of(sites.begin(), sites.end(), [&](const Message& site) { return Match(site, row); }))
            << row.level << " " << row.text;
    }
}

} // namespace
