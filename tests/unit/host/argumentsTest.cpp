// The command line of mordhost, its messages and its exit codes.
#include <fstream>

#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::MordhostTest;
using mordhostTest::ScopedVariable;

namespace {

constexpr auto policy = R"({"rules": [{"guid": "G", "type": "smb"}]})";

class Arguments : public MordhostTest {
protected:
    // The file name of the library or of a sibling.
    static std::string LibraryFile(const std::string& name) {
        return MORDHOST_LIBRARY_PREFIX + name + MORDHOST_LIBRARY_SUFFIX;
    }
};

} // namespace

TEST_F(Arguments, HelpIsWrittenToTheStandardOutputAndSucceeds) {
    const ProcessResult result = Mordhost({"--help"});
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.output.find("Usage: mordhost"), std::string::npos);
    EXPECT_NE(result.output.find("replay"), std::string::npos);
    EXPECT_EQ(result.error, "");
}

TEST_F(Arguments, ASubcommandHasItsOwnHelp) {
    const ProcessResult result = Mordhost({"replay", "--help"});
    EXPECT_EQ(result.code, 0);
    for (const char* option : {"POLICY", "EVENTS", "--format", "--no-duration", "--dots-down", "--reports", "--log",
                               "--no-log", "--dots", "--libraries", "--programs"}) {
        EXPECT_NE(result.output.find(option), std::string::npos) << option;
    }
}

TEST_F(Arguments, VersionIsWrittenAndSucceeds) {
    const ProcessResult result = Mordhost({"--version"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.output.rfind("mordhost ", 0), 0U) << result.output;
}

TEST_F(Arguments, InvalidOnesExitWithTwoAndAMessage) {
    const std::string name = directory.Write("p.json", policy);
    const std::string events = directory.Write("e.jsonl", "{}\n");
    const std::vector<std::vector<std::string>> cases = {
        {},
        {"decide"},
        {"replay"},
        {"replay", name},
        {"replay", name, events, "more"},
        {"replay", name, events, "--jsno"},
        {"replay", name, events, "--log"},
        {"replay", name, events, "--log", directory.Name("log"), "--no-log"},
    };
    for (const std::vector<std::string>& arguments : cases) {
        const ProcessResult result = Mordhost(arguments);
        EXPECT_EQ(result.code, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.error, "");
    }
}

TEST_F(Arguments, AMistypedNameSuggestsTheNearestOne) {
    const auto message = [](const std::vector<std::string>& arguments) {
        const ProcessResult result = Mordhost(arguments);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.output, "");
        return result.error.substr(0, result.error.find('\n'));
    };
    EXPECT_EQ(message({"repaly", "p", "e"}), "mordhost: there is no command repaly; did you mean replay?");
    EXPECT_EQ(message({"xyzzy"}), "mordhost: there is no command xyzzy");
    EXPECT_EQ(message({"--verson"}), "mordhost: there is no option --verson; did you mean --version?");
    EXPECT_EQ(message({"replay", "p", "e", "--formt", "json"}),
              "mordhost: there is no option --formt of replay; did you mean --format?");
    EXPECT_EQ(message({"replay", "p", "e", "--format=json", "--dot-down=x"}),
              "mordhost: there is no option --dot-down of replay; did you mean --dots-down?");
    EXPECT_EQ(message({"replay", "--log", "--formt", "p", "--nolog"}),
              "mordhost: there is no option --nolog of replay; did you mean --no-log?")
        << "the value of --log may look like an option";
}

TEST_F(Arguments, AChoiceHasTheListedValues) {
    for (const std::vector<std::string>& options :
         std::vector<std::vector<std::string>>{{"--format", "xml"}, {"--dots-down", "yes"}}) {
        const ProcessResult result = Replay(policy, "{}\n", options);
        EXPECT_EQ(result.code, 2);
        EXPECT_NE(result.error.find('"' + options[1] + "\" is not one of \""), std::string::npos) << result.error;
    }
    EXPECT_EQ(Replay(policy, "{}\n", {"--format", "text"}).code, 0);
}

// The versions of the library and of mordhost are that of the project.
TEST_F(Arguments, TheRecordsHaveTheVersionOfTheProject) {
    const std::string version = Mordhost({"--version"}).output;
    const std::string number =
        version.substr(version.find(' ') + 1, version.find_first_of("\r\n") - version.find(' ') - 1);
    const std::string text = Replay(policy, "{}\n", {"--format", "jsonl"}).output;
    EXPECT_NE(text.find("\"versions\":{\"library\":\"" + number + "\",\"host\":\"" + number + "\"}"), std::string::npos)
        << number << " in " << text;
}

TEST_F(Arguments, AFileThatCannotBeReadExitsWithTwo) {
    const ProcessResult noPolicy = Mordhost({"replay", directory.Name("none.json"), directory.Write("e.jsonl", "")});
    EXPECT_EQ(noPolicy.code, 2);
    EXPECT_EQ(Plain(noPolicy.error), "mordhost: cannot read none.json: No such file or directory\n");
    const ProcessResult noEvents =
        Mordhost({"replay", directory.Write("p.json", policy), directory.Name("none.jsonl")});
    EXPECT_EQ(noEvents.code, 2);
    EXPECT_EQ(Plain(noEvents.error), "mordhost: cannot read none.jsonl: No such file or directory\n");
    const ProcessResult noFile = Mordhost({"replay", directory.Write("p.json", policy), directory.Name("")});
    EXPECT_EQ(noFile.code, 2);
    EXPECT_EQ(Plain(noFile.error), "mordhost: cannot read : it is a directory\n");
}

TEST_F(Arguments, AFileThatCannotBeWrittenExitsWithTwo) {
    for (const char* option : {"--reports", "--log", "--dots"}) {
        const ProcessResult result = Replay(policy, "{}\n", {option, directory.Name("no/such/file")});
        EXPECT_EQ(result.code, 2) << option;
        EXPECT_EQ(Plain(result.error), "mordhost: cannot write no/such/file: No such file or directory\n");
        EXPECT_EQ(result.output, "");
    }
}

TEST_F(Arguments, AMissingLibraryExitsWithFour) {
    const ProcessResult result = Replay(policy, "{}\n", {"--libraries", directory.Name("")});
    EXPECT_EQ(result.code, 4);
    EXPECT_EQ(result.error.rfind("mordhost: cannot load ", 0), 0U) << result.error;
    EXPECT_NE(result.error.find(LibraryFile("ZelkBase")), std::string::npos) << result.error;
    EXPECT_EQ(result.output, "");
}

TEST_F(Arguments, AFileThatIsNotALibraryExitsWithFour) {
    directory.Write(LibraryFile("ZelkBase"), "no library");
    const ProcessResult result = Replay(policy, "{}\n", {"--libraries", directory.Name("")});
    EXPECT_EQ(result.code, 4);
    EXPECT_NE(result.error.find(LibraryFile("ZelkBase")), std::string::npos) << result.error;
}

TEST_F(Arguments, EachMissingLibraryIsNamed) {
    const std::filesystem::path built = mordhost::PathOf(MORDHOST_LIBRARY_DIRECTORY);
    std::vector<std::string> present;
    for (const std::string missing : {"ZelkBase", "Ferrocore", "mordRev"}) {
        const ProcessResult result = Replay(policy, "{}\n", {"--libraries", directory.Name("")});
        EXPECT_EQ(result.code, 4);
        EXPECT_NE(result.error.find(LibraryFile(missing)), std::string::npos) << result.error;
        std::filesystem::copy_file(built / LibraryFile(missing), directory.Path() / LibraryFile(missing));
    }
    EXPECT_EQ(Replay(policy, "{}\n", {"--libraries", directory.Name("")}).code, 0);
}

TEST_F(Arguments, ALibraryWithoutTheExportExitsWithFour) {
    const std::filesystem::path built = mordhost::PathOf(MORDHOST_LIBRARY_DIRECTORY);
    for (const std::string name : {"ZelkBase", "Ferrocore"}) {
        std::filesystem::copy_file(built / LibraryFile(name), directory.Path() / LibraryFile(name));
    }
    // A sibling has the export but cannot create the receiver.
    std::filesystem::copy_file(built / LibraryFile("Ferrocore"), directory.Path() / LibraryFile("mordRev"));
    const ProcessResult result = Replay(policy, "{}\n", {"--libraries", directory.Name("")});
    EXPECT_EQ(result.code, 4);
    EXPECT_EQ(result.error, "mordhost: the library mordRev does not create its object\n");
}

TEST_F(Arguments, NamesMayBeAnyUnicodeText) {
    const std::string policyName = directory.Write("p\xC3\xB6\xE2\x82\xAC \xF0\x9F\x98\x80.json", policy);
    const std::string events = directory.Write("e\xCE\xB1.jsonl", R"({"flags": 4})");
    const std::string reports = directory.Name("r\xD0\x96.txt");
    const ProcessResult result = Mordhost({"replay", policyName, events, "--reports", reports});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_EQ(Plain(result.output).rfind("p\xC3\xB6\xE2\x82\xAC \xF0\x9F\x98\x80.json: machine id ", 0), 0U)
        << result.output;
    EXPECT_TRUE(directory.Has("r\xD0\x96.txt"));
}

TEST_F(Arguments, TheMessageNamesATemporaryDirectoryThatCannotBeUsed) {
    const std::string variable = std::string(MORDHOST_PROGRAM_ENDING).empty() ? "TMPDIR" : "TMP";
    const std::string advice = "; set " + variable + " to a directory that can be written\n";
    directory.Write("file", "");
    const auto errorIn = [&](const std::string& name) {
        const ScopedVariable place(variable, mordhost::Utf8Of(directory.Path() / name));
        const ProcessResult result = Replay(policy, "{}\n");
        EXPECT_EQ(result.code, 5);
        EXPECT_EQ(result.error.rfind("mordhost: cannot make a directory for the log records in ", 0), 0U)
            << result.error;
        EXPECT_NE(result.error.find(name), std::string::npos) << result.error;
        return result.error;
    };
    EXPECT_NE(errorIn("none").find(": it does not exist" + advice), std::string::npos) << errorIn("none");
    EXPECT_NE(errorIn("file").find(": it is not a directory" + advice), std::string::npos) << errorIn("file");
}
