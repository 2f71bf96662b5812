// Code blocks that quote a file of the tree.
#include <gtest/gtest.h>

#include "docs/markdown.h"
#include "docs/sourceTree.h"

namespace {

// The first word after the language that is a path; empty if there is none.
std::string QuotedFile(const docs::CodeBlock& block) {
    for (size_t i = 1; i < block.words.size(); ++i) {
        if (block.words[i].find('/') != std::string::npos) {
            return block.words[i];
        }
    }
    return {};
}

TEST(QuotedFiles, OccurVerbatimInTheFile) {
    size_t quotes = 0;
    for (const auto& page : docs::FilesBelow("docs", ".md")) {
        for (const docs::CodeBlock& block : docs::CodeBlocks(docs::ReadText(page))) {
            const std::string file = QuotedFile(block);
            if (file.empty()) {
                continue;
            }
            ++quotes;
            EXPECT_NE(docs::ReadText(docs::InTree(file)).find(block.text), std::string::npos)
                << page.filename().string() << ":" << block.line << " is not in " << file;
        }
    }
    EXPECT_GE(quotes, 5U);
}

} // namespace
