// mordhost check, as built.
#include "system/inputStream.h"
#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::MordhostTest;

namespace {

constexpr auto clean = R"({"rules": [{"guid": "A", "type": "x"}],
 "allow_list": {"mid_list": [{"mid": "M", "protocol": ["x"]}]}, "actions": {"x": 1}, "dots": {"A": ["M"]}})";
constexpr auto withWarning = R"({"rules": [], "allow_list": {"mid_list": [7]}})";

class CheckCommand : public MordhostTest {
protected:
    ProcessResult Check(const std::string& policy, const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"check", directory.Write("p.json", policy)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        ProcessResult result = Mordhost(arguments);
        result.output = Plain(result.output);
        result.error = Plain(result.error);
        return result;
    }

    // Checks a document of this kind.
    int CodeFor(const std::string& option, const std::string& text) const {
        return Mordhost({"check", option, directory.Write("d.json", text)}).code;
    }
};

// Whether the text has a byte that a terminal interprets, besides line feeds.
bool HasControl(const std::string& text) {
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte < 0x20 && byte != '\n') || byte == 0x7F ||
            (byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0)) {
            return true;
        }
    }
    return false;
}

const std::vector<std::string> formats = {"text", "json", "jsonl", "junit", "tap", "sarif", "github"};

} // namespace

TEST_F(CheckCommand, ExitsByTheWorstFinding) {
    EXPECT_EQ(Check(clean).code, 0);
    EXPECT_EQ(Check(clean, {"--strict"}).code, 0);
    EXPECT_EQ(Check(withWarning).code, 0);
    EXPECT_EQ(Check(withWarning, {"--strict"}).code, 1);
    EXPECT_EQ(Check("{}").code, 3);
    EXPECT_EQ(Check("{}", {"--strict"}).code, 3);
    EXPECT_EQ(Check(clean, {"--format", "xml"}).code, 2);
    EXPECT_EQ(Mordhost({"check"}).code, 2);
    EXPECT_EQ(Mordhost({"check", directory.Name("none.json")}).code, 2);
}

TEST_F(CheckCommand, ShowsTheLineWithACaretThePointerAndAFix) {
    EXPECT_EQ(Check(withWarning).output,
              "p.json:1:43: warning: the library skips this entry, because it is a number [entry-not-object]\n"
              "    {\"rules\": [], \"allow_list\": {\"mid_list\": [7]}}\n"
              "                                              ^\n"
              "    pointer: /allow_list/mid_list/0\n"
              "    expected: an object with \"mid\" and \"protocol\"\n"
              "    fix: write the entry as an object\n"
              "p.json: 0 errors, 1 warning\n");
    EXPECT_EQ(Check(clean).output, "p.json: 0 errors, 0 warnings\n");
}

TEST_F(CheckCommand, ReadsTheStandardInput) {
    const ProcessResult result = Mordhost({"check", "-"}, "{\n \"rules\": 1}");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.output.substr(0, result.output.find('\n')),
              "standard input:2:11: error: \"rules\" must be an array, and this is a number [wrong-kind]");
}

TEST_F(CheckCommand, ChecksASingleDocument) {
    EXPECT_EQ(CodeFor("--allow-list", R"({"mid_list": []})"), 0);
    EXPECT_EQ(CodeFor("--allow-list", "{}"), 3);
    EXPECT_EQ(CodeFor("--allow-list", "\xEF\xBB\xBF{\"mid_list\": []}"), 3) << "the library refuses the mark";
    EXPECT_EQ(CodeFor("--action-table", R"({"x": 1})"), 0);
    EXPECT_EQ(CodeFor("--action-table", R"({"x": 1.0})"), 3);
    EXPECT_EQ(CodeFor("--answer", R"({"A": {"value": 1, "mid": {}}})"), 0);
    EXPECT_EQ(CodeFor("--answer", "{"), 3);
    EXPECT_EQ(CodeFor("--report", R"({"block": true})"), 3);
    EXPECT_EQ(CodeFor("--report",
                      R"({"rule_guid": ["A"], "type": "x", "block": false, "block_modified": false, "proc_name": "",
                          "proc_path": "", "send_ip": "", "send_port": "1", "recv_ip": "", "recv_port": "2",
                          "send_mid": "", "net_drv_version": "1", "protocol": "x"})"),
              0);
}

TEST_F(CheckCommand, NoFormatWritesControlCharacters) {
    const std::string hostile = "{\"rules\": [], \"a\\u001b[31m\\u009b\x7F]]>&<\xC2\x9B\": 1, \"\x1B\": 2}";
    const std::string escapes = "{\"rules\": [], \"a\\u001b[31m\\u009b\x7F]]>&<\xC2\x9B\\u0000\\n::error::\": 1}";
    for (const std::string& format : formats) {
        for (const std::string& text : {hostile, escapes}) {
            const ProcessResult result = Check(text, {"--format", format});
            EXPECT_EQ(result.code, 3) << format;
            EXPECT_FALSE(HasControl(result.output)) << format << '\n' << result.output;
        }
    }
}

TEST_F(CheckCommand, ALongLineAndDeepNestingHaveAPositionAndAShortMessage) {
    const ProcessResult line = Check("{\"rules\": [], \"" + std::string(100'000'000, 'k') + "\": 1}");
    EXPECT_EQ(line.code, 3);
    EXPECT_LT(line.output.size(), 5000U);
    EXPECT_EQ(line.output.rfind("p.json:1:15: error: unknown key", 0), 0U) << line.output.substr(0, 100);
    const ProcessResult depth = Check(std::string(1'000'000, '['));
    EXPECT_EQ(depth.code, 3);
    EXPECT_EQ(depth.output.rfind("p.json:1:65: error: values are nested more than 64 deep [nesting]", 0), 0U);
}

TEST_F(CheckCommand, ListsAtMostTenThousandFindings) {
    std::string entries = "1";
    for (int i = 1; i < 10'050; ++i) {
        entries += ",1";
    }
    const ProcessResult result = Check("{\"rules\": [], \"allow_list\": {\"mid_list\": [" + entries + "]}}");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.output.find("\nand 50 more\np.json: 0 errors, 10050 warnings\n"), std::string::npos);
}

TEST_F(CheckCommand, TheExampleHasTheExpectedFindings) {
    const ProcessResult result =
        kit::RunProcess({MORDHOST_PROGRAM, {"check", "examples/faults/policy.json"}, "", MORDHOST_SOURCE_DIRECTORY});
    EXPECT_EQ(result.code, 0);
    const std::string expected = MORDHOST_SOURCE_DIRECTORY "/examples/faults/expected/policy.check.txt";
    EXPECT_EQ(result.output, mordhost::InputStream(expected).ReadAll());
}

TEST_F(CheckCommand, AReplayAcceptsWhatTheLibrarySkipsAndCountsIt) {
    const ProcessResult one = Replay(withWarning, "{}\n");
    EXPECT_EQ(one.code, 0);
    EXPECT_EQ(one.error, "mordhost: warning: the library skips 1 part of the policy's documents; 'mordhost check' "
                         "lists them\n");
    EXPECT_EQ(Replay(clean, "{}\n").error, "");
}
