// Programs of events: start, readiness, end.
#include "policy/policyPrograms.h"

#include <memory>
#include <set>

#include <gtest/gtest.h>

#include "kit/system/process.h"
#include "system/runError.h"
#include "unit/host/refusal.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::IsRunning;
using mordhostTest::RefusalOf;

namespace {

// The path of a test program: waiter32, waiter64, or one of the folder programs.
std::filesystem::path File(const std::string& name) {
    return WithProgramEnding(PathOf(name.starts_with("waiter") ? MORDHOST_PROGRAMS : MORDHOST_ODD_PROGRAMS) /
                             PathOf(name));
}

constexpr Program::Patience little = {std::chrono::milliseconds(300), std::chrono::milliseconds(300)};
constexpr Program::Patience littleAtTheEnd = {std::chrono::seconds(30), std::chrono::milliseconds(300)};
constexpr Program::Patience much = {std::chrono::seconds(30), std::chrono::seconds(30)};

std::string FailureOf(const std::filesystem::path& file, const Program::Patience& patience) {
    try {
        const Program program(file, patience);
    } catch (const RunError& error) {
        return error.what();
    }
    return "started";
}

ConnectionEvent EventOf(const std::string& program) {
    ConnectionEvent event;
    event.program = ProgramOfEvent{program, {"e.jsonl", 7, 12}};
    return event;
}

} // namespace

TEST(Program, RunsUntilItsInputEnds) {
    for (const char* const name : {"waiter32", "waiter64"}) {
        Program program(File(name), much);
        const uint32_t id = program.Id();
        EXPECT_TRUE(IsRunning(id)) << name;
        EXPECT_TRUE(program.End()) << name << " ends by itself";
        EXPECT_FALSE(IsRunning(id)) << name;
    }
}

TEST(Program, EndsWithItsObject) {
    uint32_t id = 0;
    {
        const Program program(File("waiter32"), much);
        id = program.Id();
        EXPECT_TRUE(IsRunning(id));
    }
    EXPECT_FALSE(IsRunning(id));
}

TEST(Program, DoesNotKeepTheInputOfAnotherProgramOpen) {
    Program first(File("waiter32"), much);
    Program second(File("waiter64"), much);
    Program third(File("staysOn"), littleAtTheEnd);
    EXPECT_NE(first.Id(), second.Id());
    EXPECT_TRUE(first.End()) << "the others do not have its input open";
    EXPECT_TRUE(IsRunning(second.Id()));
    EXPECT_TRUE(second.End());
    EXPECT_TRUE(IsRunning(third.Id()));
}

TEST(Program, ThatDoesNotEndIsKilled) {
    uint32_t id = 0;
    {
        Program program(File("staysOn"), littleAtTheEnd);
        id = program.Id();
        EXPECT_FALSE(program.End());
        EXPECT_TRUE(IsRunning(id));
    }
    EXPECT_FALSE(IsRunning(id));
}

TEST(Program, ThatIsMissingCannotBeStarted) {
    const std::filesystem::path file = File("none");
    const std::string failure = FailureOf(file, much);
    EXPECT_EQ(failure.rfind("cannot start the program " + Utf8Of(file) + ": ", 0), 0U) << failure;
    EXPECT_GT(failure.size(), ("cannot start the program " + Utf8Of(file) + ": ").size()) << "and why";
}

TEST(Program, ThatIsNotExecutableCannotBeStarted) {
    const kit::TemporaryDirectory directory;
    const std::filesystem::path file = WithProgramEnding(PathOf(directory.Name("text")));
    directory.Write(Utf8Of(file.filename()), "no program");
    const std::string failure = FailureOf(file, much);
    EXPECT_EQ(failure.rfind("cannot start the program " + Utf8Of(file) + ": ", 0), 0U) << failure;
}

TEST(Program, ThatEndsBeforeItsLineIsNotReady) {
    const std::filesystem::path file = File("endsAtOnce");
    EXPECT_EQ(FailureOf(file, much),
              "the program " + Utf8Of(file) + " ended its output without a line that says that it is ready");
}

TEST(Program, ThatWritesNothingIsNotAwaitedForLong) {
    const std::filesystem::path file = File("neverReady");
    EXPECT_EQ(FailureOf(file, little),
              "the program " + Utf8Of(file) + " did not write within 300 ms the line that says that it is ready");
}

TEST(Program, HasAnExtensionOnlyOnWindows) {
    const std::string ending = MORDHOST_PROGRAM_ENDING;
    EXPECT_EQ(WithProgramEnding("bin/waiter"), "bin/waiter" + ending);
    EXPECT_EQ(WithProgramEnding("bin.old/waiter"), "bin.old/waiter" + ending);
    EXPECT_EQ(WithProgramEnding("waiter.com"), "waiter.com");
}

TEST(Programs, StartOncePerNameAtTheFirstEvent) {
    Policy policy;
    policy.programs = {{"a", "waiter32"}, {"b", "waiter32"}, {"c", "not/there"}};
    std::set<uint32_t> ids;
    {
        PolicyPrograms programs(policy, PathOf(MORDHOST_PROGRAMS));
        ConnectionEvent first = EventOf("a");
        ConnectionEvent second = EventOf("b");
        ConnectionEvent third = EventOf("a");
        programs.GiveId(first);
        programs.GiveId(second);
        programs.GiveId(third);
        ASSERT_TRUE(first.pid && second.pid && third.pid);
        EXPECT_EQ(*first.pid, *third.pid);
        EXPECT_NE(*first.pid, *second.pid) << "two names of one file are two processes";
        ids = {*first.pid, *second.pid};
        for (const uint32_t id : ids) {
            EXPECT_TRUE(IsRunning(id));
        }
    }
    for (const uint32_t id : ids) {
        EXPECT_FALSE(IsRunning(id));
    }
}

TEST(Programs, DoNotChangeOtherEvents) {
    const Policy policy;
    PolicyPrograms programs(policy, PathOf(MORDHOST_PROGRAMS));
    ConnectionEvent event;
    programs.GiveId(event);
    EXPECT_EQ(event.pid, std::nullopt);
    event.pid = 4;
    programs.GiveId(event);
    EXPECT_EQ(event.pid, 4U);
}

TEST(Programs, AreSearchedInTheGivenDirectoryUnlessTheyHaveOne) {
    Policy policy;
    policy.programs = {{"near", "x.bin"}, {"far", "there/x.bin"}};
    const PolicyPrograms programs(policy, "here");
    EXPECT_EQ(programs.FileOf({"near", {}}), std::filesystem::path("here") / "x.bin");
    EXPECT_EQ(programs.FileOf({"far", {}}), "there/x.bin");
}

TEST(Programs, WithUnknownNamesAreRefusedAtThePositionInTheEvent) {
    Policy policy;
    policy.programs = {{"a", "waiter32"}};
    PolicyPrograms programs(policy, PathOf(MORDHOST_PROGRAMS));
    ConnectionEvent event = EventOf("A");
    EXPECT_EQ(RefusalOf([&] { programs.GiveId(event); }), "e.jsonl:7:12: the policy has no program \"A\"");
    EXPECT_EQ(RefusalOf([&] { programs.FileOf(*event.program); }), "e.jsonl:7:12: the policy has no program \"A\"");
}
