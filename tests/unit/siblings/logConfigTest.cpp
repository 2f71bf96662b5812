#include <gtest/gtest.h>

#include "unit/siblings/logFolder.h"
#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

namespace {

namespace fs = std::filesystem;

constexpr char variable[] = "ZELK_LOG_DIR";

class LogConfigTest : public testing::Test {
protected:
    LogConfigTest() { SetVariable(variable, {}); }
    ~LogConfigTest() override { SetVariable(variable, {}); }

    static ServiceHolder<ILogConfig> MakeConfig(const SiblingLibrary& from) {
        return from.Make<ILogConfig>(SID_LogConfig);
    }

    static WideString Directory(const SiblingLibrary& from) {
        const auto config = MakeConfig(from);
        const WideChar* const text = config->GetConfigText(0x200002, 0);
        return text == nullptr ? WIDE("(null)") : text;
    }

    const TestFolder folder;
    const SiblingLibrary library{std::string("ZelkBase")};
};

TEST_F(LogConfigTest, returnsTheDirectoryOfTheLibrary) {
    EXPECT_EQ(Directory(library), (SiblingLibrary::File("ZelkBase").parent_path() / "").string<WideChar>());
}

TEST_F(LogConfigTest, returnsTheDirectoryOfACopiedLibrary) {
    const fs::path copy = folder.Path() / SiblingLibrary::File("ZelkBase").filename();
    fs::copy_file(SiblingLibrary::File("ZelkBase"), copy);
    EXPECT_EQ(Directory(SiblingLibrary(copy)), folder.TextWithSeparator());
}

TEST_F(LogConfigTest, returnsTheDirectoryOfTheVariableWithASeparator) {
    for (const WideString& text : {folder.Text(), folder.TextWithSeparator()}) {
        SetVariable(variable, text);
        EXPECT_EQ(Directory(library), folder.TextWithSeparator());
    }
}

TEST_F(LogConfigTest, resolvesARelativeDirectory) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.Path());
    SetVariable(variable, WIDE("logs"));
    const WideString directory = Directory(library);
    fs::current_path(before);
    EXPECT_EQ(directory, (folder.Path() / "logs" / "").string<WideChar>());
}

TEST_F(LogConfigTest, acceptsADirectoryThatDoesNotExist) {
    SetVariable(variable, (folder.Path() / "later").string<WideChar>());
    EXPECT_EQ(Directory(library), (folder.Path() / "later" / "").string<WideChar>());
}

TEST_F(LogConfigTest, acceptsALongDirectory) {
    const WideString longPath = folder.TextWithSeparator() + WideString(3000, WideChar{'d'});
    SetVariable(variable, longPath);
    EXPECT_EQ(Directory(library), longPath + static_cast<WideChar>(fs::path::preferred_separator));
}

TEST_F(LogConfigTest, readsTheVariableOncePerObject) {
    SetVariable(variable, folder.Text());
    const auto config = MakeConfig(library);
    const WideChar* const text = config->GetConfigText(0x200002, 0);
    SetVariable(variable, (folder.Path() / "other").string<WideChar>());
    EXPECT_EQ(config->GetConfigText(0x200002, 0), text) << "the text belongs to the object";
    EXPECT_EQ(WideString(text), folder.TextWithSeparator());
    EXPECT_EQ(Directory(library), (folder.Path() / "other" / "").string<WideChar>());
}

TEST_F(LogConfigTest, returnsNullForAnUnknownCode) {
    const auto config = MakeConfig(library);
    for (const uint32_t code : {0U, 1U, 0x200001U, 0x200003U, 0x20002U, 0xFFFFFFFFU}) {
        EXPECT_EQ(config->GetConfigText(code, 0), nullptr) << code;
    }
}

} // namespace

} // namespace siblingTest
