// Links of the documentation: they lead to files and headings that exist.
#include <algorithm>
#include <regex>

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

std::vector<Link> Links(const std::string& markdown) {
    const std::regex link(R"(\]\(([^)#\s]*)(#([^)\s]*))?\))");
    const std::regex span("`[^`]*`");
    std::vector<Link> links;
    for (const docs::TextLine& line : docs::TextLines(markdown)) {
        const std::string text = std::regex_replace(line.text, span, "code");
        for (std::sregex_iterator i(text.begin(), text.end(), link), end; i != end; ++i) {
            const std::string file = (*i)[1];
            if (!file.starts_with("http://") && !file.starts_with("https://")) {
                links.push_back({line.number, file, (*i)[3]});
            }
        }
    }
    return links;
}

TEST(Links, LeadToFilesAndHeadingsThatExist) {
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
