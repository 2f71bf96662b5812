// The committed man page and completions are those that the option table gives.
#include "pages/generatedPages.h"

#include <gtest/gtest.h>

#include "arguments/optionTable.h"
#include "kit/system/process.h"
#include "system/inputStream.h"

using mordhost::CommandTable;
using mordhost::GeneratedPage;
using mordhost::InputStream;
using kit::ProcessResult;
using kit::RunProcess;

namespace {

const std::string host = std::string(MORDHOST_SOURCE_DIRECTORY) + "/host";

} // namespace

TEST(GeneratedPages, AreInTheTree) {
    for (const GeneratedPage& page : mordhost::GeneratedPages(host)) {
        EXPECT_EQ(InputStream(host + '/' + page.file).ReadAll(), page.text)
            << page.file << ": build the target `pages` to write it";
    }
}

TEST(GeneratedPages, HaveEveryCommandAndOption) {
    const std::vector<GeneratedPage> pages = mordhost::GeneratedPages(host);
    ASSERT_EQ(pages.size(), 4U);
    for (const GeneratedPage& page : pages) {
        std::string text = page.text;
        std::erase(text, '\\'); // the man page escapes hyphens
        for (const mordhost::CommandEntry& command : CommandTable()) {
            EXPECT_NE(text.find(command.name), std::string::npos) << page.file << ": " << command.name;
            for (const mordhost::OptionEntry& option : command.options) {
                // fish names options without hyphens
                EXPECT_NE(text.find(option.name.substr(2)), std::string::npos) << page.file << ": " << option.name;
            }
        }
    }
}

TEST(ManPage, HasNoFaultThatMandocKnows) {
    const ProcessResult result = RunProcess({"/usr/bin/env", {"mandoc", "-Tlint", host + "/mordhost.1"}, "", ""});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.output + result.error, "");
}

TEST(OptionTable, ExcludesAndChoicesAreComplete) {
    for (const mordhost::CommandEntry& command : CommandTable()) {
        EXPECT_EQ(mordhost::FindCommand(command.name), &command);
        for (const mordhost::OptionEntry& option : command.options) {
            SCOPED_TRACE(std::string(command.name) + ' ' + std::string(option.name));
            EXPECT_TRUE(option.name.starts_with("--"));
            EXPECT_FALSE(option.help.empty() || option.help.ends_with('.'));
            EXPECT_EQ(option.value.empty(), option.kind == mordhost::ValueKind::none);
            EXPECT_EQ(option.choices != nullptr, option.kind == mordhost::ValueKind::choice);
            EXPECT_TRUE(option.excludes.empty() || mordhost::FindOption(command, option.excludes) != nullptr);
            EXPECT_EQ(mordhost::FindOption(command, option.name), &option) << "its name is unique";
        }
    }
}
