// Links in the documentation.
#include <algorithm>

#include <gtest/gtest.h>

#include "docs/markdown.h"
#include "docs/sourceTree.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Pages() {
    std::vector<fs::path> pages;
    for (const char* const folder : {"docs", "examples", "siblings", "host", "tests"}) {
        const std::vector<fs::path> below = docs::FilesBelow(folder, ".md");
        pages.insert(pages.end(), below.begin(), below.end());
    }
    for (const auto& entry : fs::directory_iterator(docs::InTree(""))) {
        if (entry.path().extension() == ".md") {
            pages.push_back(entry.path());
        }
    }
    return pages;
}

struct Link {
    size_t line;
    std::string file;   // empty for the page itself
    std::string anchor; // empty for the whole file
};

// Removes code spans, which cannot contain links.
std::string WithoutSpans(const std::string& line) {
    std::string rest;
    bool inSpan = false;
    for (const char c : line) {
        if (c == '`') {
            inSpan = !inSpan;
        } else if (!inSpan) {
            rest += c;
        }
    }
    return rest;
}

std::vector<Link> Links(const std::string& markdown) {
    std::vector<Link> links;
    for (const docs::TextLine& line : docs::TextLines(markdown)) {
        const std::string text = WithoutSpans(line.text);
        for (size_t at = text.find("]("); at != std::string::npos; at = text.find("](", at + 1)) {
            const std::string target = text.substr(at + 2, text.find(')', at) - at - 2);
            if (target.starts_with("http://") || target.starts_with("https://")) {
                continue;
            }
            const size_t hash = target.find('#');
            links.push_back({line.number, target.substr(0, hash),
                             hash == std::string::npos ? std::string() : target.substr(hash + 1)});
        }
    }
    return links;
}

TEST(Links, LeadToExistingFilesAndHeadings) {
    size_t followed = 0;
    for (const fs::path& page : Pages()) {
        const std::string text = docs::ReadText(page);
        for (const Link& link : Links(text)) {
            ++followed;
            const std::string place = page.filename().string() + ":" + std::to_string(link.line);
            const fs::path target = link.file.empty() ? page : page.parent_path() / link.file;
            EXPECT_TRUE(fs::exists(target)) << place << " leads to " << link.file;
            if (link.anchor.empty() || !fs::exists(target)) {
                continue;
            }
            const std::vector<std::string> anchors = docs::Anchors(docs::ReadText(target));
            EXPECT_NE(std::find(anchors.begin(), anchors.end(), link.anchor), anchors.end())
                << place << " leads to #" << link.anchor << " of " << target.filename().string();
        }
    }
    EXPECT_GE(followed, 30U);
}

} // namespace
