// mordinspect as a program, on real children of both widths.
#include <chrono>
#include <utility>

#include <rapidjson/document.h>

#include <windows.h>

#include "kit/system/process.h"
#include "unit/native/real/childProcess.h"
#include "unit/native/real/systemTellsPeb.h"

using kit::ProcessResult;

namespace {

constexpr bool callerIs32Bit = sizeof(void*) == 4;

ProcessResult RunTool(const std::vector<std::string>& arguments) {
    return kit::RunProcess({MORDINSPECT_PROGRAM, arguments, "", ""});
}

const std::string limitOfReads = "16384 reads";
const std::string limitOfTime = "10 seconds";

// A run and the limit that may have cut an endless list in it.
struct TimedResult {
    ProcessResult result;
    std::chrono::steady_clock::duration elapsed;

    // A run that took less than the limit of time was cut by the limit of reads.
    bool Allows(const std::string& limit) const {
        return limit == limitOfReads || (limit == limitOfTime && elapsed >= std::chrono::seconds(10));
    }
};

TimedResult RunTimed(const std::vector<std::string>& arguments) {
    const auto begin = std::chrono::steady_clock::now();
    ProcessResult result = RunTool(arguments);
    return {std::move(result), std::chrono::steady_clock::now() - begin};
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

TEST_P(Mordinspect, ShowsTheSameAsText) {
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

// The limit of reads cuts the list, unless the machine needs the limit of time for fewer reads.
TEST_P(Mordinspect, SaysThatAListWithoutAnEndIsCut) {
    ChildProcess child(GetParam());
    child.Tell("linkToItself");
    const char* const list = GetParam() == 32 ? "modules_32" : "modules_64";
    const std::string id = std::to_string(child.Id());
    const TimedResult json = RunTimed({id, "--json"});
    const rapidjson::Document seen = Parsed(json.result.output);
    if (!SystemTellsPeb(child.Handle())) {
        EXPECT_TRUE(seen[list]["status"].IsString());
        EXPECT_FALSE(seen.HasMember("incomplete"));
        return;
    }
    EXPECT_EQ(seen["incomplete"][list]["unavailable"].GetString(), std::string("the next module"));
    const std::string limit = seen["incomplete"][list]["limit"].GetString();
    EXPECT_TRUE(json.Allows(limit)) << limit;
    EXPECT_GT(seen[list].Size(), limit == limitOfReads ? 1000U : 1U);

    const TimedResult text = RunTimed({id});
    const auto isCutBy = [&](const std::string& reason) {
        const std::string line = "\n  incomplete: the next module (the limit of " + reason + " was reached)\n";
        return text.result.output.find(line) != std::string::npos;
    };
    EXPECT_TRUE(isCutBy(limitOfReads) || (isCutBy(limitOfTime) && text.Allows(limitOfTime))) << text.result.output;
}

TEST_P(Mordinspect, MarksAModulePathThatIsTooLong) {
    ChildProcess child(GetParam());
    const char* const list = GetParam() == 32 ? "modules_32" : "modules_64";
    for (const unsigned size : {1024U, 1026U}) {
        child.Tell("setModuleName " + std::to_string(size));
        const rapidjson::Document seen = Parsed(RunTool({std::to_string(child.Id()), "--json"}).output);
        if (SystemTellsPeb(child.Handle())) {
            EXPECT_EQ(seen[list][0]["path"].GetString(), std::string(512, 'p'));
            EXPECT_EQ(seen[list][0].HasMember("truncated"), size > 1024) << size;
        } else {
            EXPECT_TRUE(seen[list]["status"].IsString());
        }
    }
}

// Whether the system tells the end of its lists from a failure.
TEST_P(Mordinspect, ListsTheThreadsToTheirEnd) {
    const ChildProcess child(GetParam());
    const rapidjson::Document seen = Parsed(RunTool({std::to_string(child.Id()), "--json"}).output);
    ASSERT_TRUE(seen["threads"].IsArray());
    EXPECT_FALSE(seen.HasMember("incomplete"));
}

TEST_P(Mordinspect, ShowsAReasonWithEachPartThatIsNotThere) {
    const ChildProcess child(GetParam());
    const rapidjson::Document seen = Parsed(RunTool({std::to_string(child.Id()), "--json"}).output);
    const auto hasReason = [](const rapidjson::Value& part) {
        return !part.IsObject() || !part.HasMember("unavailable") || part.HasMember("status") ||
               part.HasMember("error") || part.HasMember("limit") || part.HasMember("seen");
    };
    size_t missing = 0;
    for (auto part = seen.MemberBegin(); part != seen.MemberEnd(); ++part) {
        EXPECT_TRUE(hasReason(part->value)) << part->name.GetString();
        missing += part->value.IsObject() ? 1U : 0U;
    }
    for (const auto& thread : seen["threads"].GetArray()) {
        EXPECT_TRUE(hasReason(thread["file"]));
        missing += thread["file"].IsObject() ? 1U : 0U;
    }
    if (GetParam() == 64 || !SystemTellsPeb(child.Handle())) {
        EXPECT_GT(missing, 0U) << "32-bit modules at the least";
    }
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

TEST(MordinspectArguments, AMissingProcessIsReported) {
    const ProcessResult result = RunTool({"4294967292"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "mordinspect: unavailable: no process has the id 4294967292 (error 87)\n");
}

TEST(MordinspectArguments, MustNameAProcessOrAll) {
    EXPECT_EQ(RunTool({}).code, 2);
    EXPECT_EQ(RunTool({"12", "--all"}).code, 2);
    EXPECT_EQ(RunTool({"notANumber"}).code, 2);
    EXPECT_EQ(RunTool({"--none"}).code, 2);
}

TEST(MordinspectArguments, ThatAreNoProcessIdAreNamed) {
    for (const char* const text : {"", " ", "0x138", "12 ", "+12", "4294967296", "notANumber"}) {
        const ProcessResult result = RunTool({text});
        EXPECT_EQ(result.code, 2) << text;
        EXPECT_EQ(result.output, "") << text;
        const std::string message =
            "PID: \"" + std::string(text) + "\" is no process id: it takes decimal digits, at most 4294967295";
        EXPECT_EQ(result.error.rfind(message, 0), 0U) << result.error;
    }
    EXPECT_EQ(RunTool({"", "--all"}).code, 2);
}

TEST(MordinspectArguments, WithZerosInFrontAreDecimal) {
    const ChildProcess child(callerIs32Bit ? 32 : 64);
    const ProcessResult result = RunTool({"00" + std::to_string(child.Id()), "--json"});
    EXPECT_EQ(Parsed(result.output)["process"].GetUint(), child.Id());
    EXPECT_NE(RunTool({"0000000004294967292"}).error.find(" 4294967292 "), std::string::npos);
}

TEST(MordinspectArguments, HelpAndVersionSucceed) {
    EXPECT_EQ(RunTool({"--help"}).code, 0);
    EXPECT_EQ(RunTool({"--version"}).output.rfind("mordinspect ", 0), 0U);
}
