// mordinspect as a program, on real children of both widths.
#include <rapidjson/document.h>

#include <windows.h>

#include "host/process.h"
#include "native/real/childProcess.h"
#include "native/real/systemTellsPeb.h"

using mordhostTest::ProcessResult;

namespace {

constexpr bool callerIs32Bit = sizeof(void*) == 4;

ProcessResult RunTool(const std::vector<std::string>& arguments) {
    return mordhostTest::RunProcess({MORDINSPECT_PROGRAM, arguments, "", ""});
}

rapidjson::Document Parsed(const std::string& text) {
    rapidjson::Document document;
    document.Parse(text.c_str(), text.size());
    EXPECT_TRUE(document.IsObject()) << text;
    return document;
}

class Mordinspect : public testing::TestWithParam<int> {};

} // namespace

TEST_P(Mordinspect, ShowsWhatTheLibrarySeesOfAChild) {
    const ChildProcess child(GetParam());
    const ProcessResult result = RunTool({std::to_string(child.Id()), "--json"});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_EQ(result.error, "");
    const rapidjson::Document seen = Parsed(result.output);
    EXPECT_EQ(seen["process"].GetUint(), child.Id());
    EXPECT_EQ(seen["bits"].GetInt(), GetParam());
    ASSERT_TRUE(seen["threads"].IsArray()) << result.output;
    EXPECT_GE(seen["threads"].Size(), 1U);
    const auto& modules = seen[GetParam() == 32 ? "modules_32" : "modules_64"];
    if (SystemTellsPeb(child.Handle())) {
        ASSERT_TRUE(seen["image_path"].IsString()) << result.output;
        EXPECT_EQ(seen["image_path"].GetString(), ProgramOf(child.Handle()));
        EXPECT_NE(std::string(seen["command_line"].GetString()).find("nativeChild.exe"), std::string::npos);
        ASSERT_TRUE(modules.IsArray());
        EXPECT_EQ(modules[0]["path"].GetString(), ProgramOf(child.Handle()));
    } else {
        EXPECT_EQ(seen["image_path"]["status"].GetString(),
                  std::string(callerIs32Bit ? "0xC0000138" : "0xC0000005")); // no such function, and a read of no PEB
        EXPECT_TRUE(modules.IsObject()) << result.output;
    }
}

TEST_P(Mordinspect, ShowsTheSameToAPerson) {
    const ChildProcess child(GetParam());
    const ProcessResult result = RunTool({std::to_string(child.Id())});
    EXPECT_EQ(result.code, 0) << result.error;
    const std::string head =
        "process           " + std::to_string(child.Id()) + ", " + std::to_string(GetParam()) + "-bit\nparent";
    EXPECT_EQ(result.output.substr(0, head.size()), head);
    const std::string path = SystemTellsPeb(child.Handle()) ? ProgramOf(child.Handle()) : "unavailable: ";
    EXPECT_NE(result.output.find("\nimage path        " + path), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\nthreads\n"), std::string::npos) << result.output;
}

TEST_P(Mordinspect, ListsAChildAmongAllProcesses) {
    const ChildProcess child(GetParam());
    const rapidjson::Document seen = Parsed(RunTool({"--all", "--json"}).output);
    size_t found = 0;
    for (const auto& process : seen["processes"].GetArray()) {
        if (process["process"].GetUint() == child.Id()) {
            ++found;
            EXPECT_EQ(process["parent"].GetUint(), GetCurrentProcessId());
            EXPECT_EQ(process["image"].GetString(), std::string("nativeChild.exe"));
        }
    }
    EXPECT_EQ(found, 1U);
}

INSTANTIATE_TEST_SUITE_P(, Mordinspect, testing::Values(32, 64),
                         [](const auto& bits) { return "Child" + std::to_string(bits.param); });

TEST(MordinspectArguments, AProcessThatIsNotThereIsTold) {
    const ProcessResult result = RunTool({"4294967292"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error.rfind("mordinspect: unavailable: process 4294967292 (error ", 0), 0U) << result.error;
}

TEST(MordinspectArguments, MustNameAProcessOrAll) {
    EXPECT_EQ(RunTool({}).code, 2);
    EXPECT_EQ(RunTool({"12", "--all"}).code, 2);
    EXPECT_EQ(RunTool({"notANumber"}).code, 2);
    EXPECT_EQ(RunTool({"--none"}).code, 2);
}

TEST(MordinspectArguments, HelpAndVersionAreNoMistake) {
    EXPECT_EQ(RunTool({"--help"}).code, 0);
    EXPECT_EQ(RunTool({"--version"}).output.rfind("mordinspect ", 0), 0U);
}
