// A run does not write a file that it reads, nor a file twice.
#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::MordhostTest;

namespace {

class FilesApart : public MordhostTest {
protected:
    FilesApart() {
        for (const auto& [name, text] : files) {
            directory.Write(name, text);
        }
        std::filesystem::create_directory(directory.Path() / "there");
    }

    // Replays the files in their directory.
    ProcessResult Replayed(const std::vector<std::string>& options, const std::string& events = "e.jsonl") const {
        std::vector<std::string> arguments = {"replay", "p.json", events};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return kit::RunProcess({MORDHOST_PROGRAM, arguments, "{}\n", directory.Name("")});
    }

    void ExpectRefusal(const std::vector<std::string>& options, const std::string& message) const {
        const ProcessResult result = Replayed(options);
        EXPECT_EQ(result.code, 2) << message;
        EXPECT_EQ(result.error, "mordhost: " + message + "\n");
        EXPECT_EQ(result.output, "");
        for (const auto& [name, text] : files) {
            EXPECT_EQ(directory.Read(name), text) << message << ": " << name;
        }
        for (const char* const name : {"new", "there/new"}) {
            EXPECT_FALSE(directory.Has(name)) << message << ": " << name;
        }
    }

    const std::vector<std::pair<std::string, std::string>> files = {
        {"p.json", R"({"rules": [{"guid": "G", "type": "t"}], "allow_list": "allow.json", "actions": "actions.json",
                       "dots": "dots.json", "programs": {"a": "./program.exe"}})"},
        {"e.jsonl", "{}\n"},
        {"allow.json", R"({"mid_list": [{"mid": "M", "protocol": ["t"]}]})"},
        {"actions.json", R"({"t": 0})"},
        {"dots.json", R"({"G": ["M"]})"},
        {"program.exe", "never started"},
    };
};

} // namespace

TEST_F(FilesApart, NoOutputOverwritesAnInput) {
    for (const std::string option : {"--reports", "--log", "--dots"}) {
        for (const auto& [file, what] :
             std::vector<std::pair<std::string, std::string>>{{"p.json", "the policy p.json"},
                                                              {"e.jsonl", "the events e.jsonl"},
                                                              {"allow.json", "the allow list allow.json"},
                                                              {"actions.json", "the action table actions.json"},
                                                              {"program.exe", "the program ./program.exe"}}) {
            ExpectRefusal({option, file}, option + ' ' + file + " and " + what + " are the same file");
            const std::string detour = "there/../" + file;
            ExpectRefusal({option, detour}, option + ' ' + detour + " and " + what + " are the same file");
        }
    }
    for (const std::string option : {"--reports", "--log"}) {
        ExpectRefusal({option, "dots.json"}, option + " dots.json and the dots dots.json are the same file");
    }
}

TEST_F(FilesApart, NoOutputOverwritesAnInputUnderAnotherName) {
    std::filesystem::create_hard_link(directory.Path() / "e.jsonl", directory.Path() / "second");
    ExpectRefusal({"--reports", "second"}, "--reports second and the events e.jsonl are the same file");
}

TEST_F(FilesApart, NoTwoOutputsAreTheSameFile) {
    ExpectRefusal({"--reports", "new", "--log", "new"}, "--log new and --reports new are the same file");
    ExpectRefusal({"--reports", "there/new", "--log", "there/../there/new"},
                  "--log there/../there/new and --reports there/new are the same file");
    ExpectRefusal({"--log", "new", "--dots", "new"}, "--dots new and --log new are the same file");
    ExpectRefusal({"--reports", "new", "--dots", directory.Name("new")},
                  "--dots " + directory.Name("new") + " and --reports new are the same file");
    directory.Write("old", "");
    ExpectRefusal({"--reports", "old", "--log", "./old"}, "--log ./old and --reports old are the same file");
}

TEST_F(FilesApart, DotsReplaceOnlyFiles) {
    ExpectRefusal({"--dots", "there"}, "cannot replace there: it is a directory, not a file");
    ExpectRefusal({"--dots", "there/none/new"}, "cannot write there/none/new: No such file or directory");
}

TEST_F(FilesApart, TheDotsOfThePolicyMayBeReplaced) {
    const ProcessResult result = Replayed({"--dots", "there/../dots.json"});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_EQ(directory.Read("dots.json"), "{}\n");
}

TEST_F(FilesApart, DotsThatAreAlsoTheAllowListAreNotReplaced) {
    directory.Write("allow.json", R"({"mid_list": []})");
    directory.Write("p.json", R"({"rules": [], "allow_list": "allow.json", "dots": "allow.json"})");
    const ProcessResult result = Replayed({"--dots", "allow.json"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.error, "mordhost: --dots allow.json and the allow list allow.json are the same file\n");
}

TEST_F(FilesApart, SeparateFilesAreAccepted) {
    const ProcessResult result = Replayed({"--reports", "there/new", "--log", "new", "--dots", "there/dots.json"});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_NE(directory.Read("there/new"), "");
    EXPECT_NE(directory.Read("new"), "");
    EXPECT_EQ(directory.Read("there/dots.json"), "{}\n");
}
