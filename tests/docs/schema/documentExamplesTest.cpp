// The JSON examples on the pages of docs/. Each block names its schema.
#include <sstream>

#include <gtest/gtest.h>

#include "docs/markdown.h"
#include "docs/schema/schemaFile.h"
#include "docs/sourceTree.h"
#include "kit/host/receiverFixture.h"

namespace {

struct Example {
    std::string place;
    std::string schema;
    std::string text;
};

// The blocks marked "json SCHEMA", and the lines of those marked "jsonl SCHEMA".
std::vector<Example> Examples() {
    std::vector<Example> examples;
    for (const auto& page : docs::FilesBelow("docs", ".md")) {
        for (const docs::CodeBlock& block : docs::CodeBlocks(docs::ReadText(page))) {
            const std::string place = page.filename().string() + ":" + std::to_string(block.line);
            if (block.Word(0) == "json") {
                examples.push_back({place, block.Word(1), block.text});
            } else if (block.Word(0) == "jsonl") {
                std::istringstream lines(block.text);
                for (std::string line; std::getline(lines, line);) {
                    examples.push_back({place, block.Word(1), line});
                }
            }
        }
    }
    return examples;
}

TEST(DocumentExamples, FitTheirSchema) {
    std::set<std::string> shown;
    for (const Example& example : Examples()) {
        SCOPED_TRACE(example.place);
        ASSERT_FALSE(example.schema.empty());
        EXPECT_EQ(schema::SchemaFile(example.schema).Misfit(example.text), "");
        shown.insert(example.schema);
    }
    for (const std::string& name : schema::SchemaNames()) {
        EXPECT_TRUE(shown.contains(name)) << "no example of " << name;
    }
}

class AcceptedExamples : public kit::ReceiverFixture {};

TEST_F(AcceptedExamples, LogNoError) {
    StartLogging();
    int accepted = 0;
    for (const Example& example : Examples()) {
        SCOPED_TRACE(example.place);
        if (example.schema == "allowList") {
            EXPECT_TRUE(receiver->SetAllowList(example.text.c_str()));
        } else if (example.schema == "actionTable") {
            EXPECT_TRUE(receiver->ParseActionJson(example.text.c_str()));
        } else {
            continue;
        }
        ++accepted;
        for (const std::string& record : TakeRecords()) {
            EXPECT_EQ(record.find("[ERROR]"), std::string::npos) << record;
        }
    }
    EXPECT_GE(accepted, 2);
}

} // namespace
