// Standard streams that are files, devices, and links. Posix only.
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "unit/host/mordhostFixture.h"

using kit::ProcessResult;
using mordhostTest::MordhostTest;

namespace {

class FilesApartPosix : public MordhostTest {
protected:
    FilesApartPosix() {
        directory.Write("p.json", R"({"rules": [{"guid": "G", "type": "t"}]})");
        directory.Write("e.jsonl", "{}\n");
    }

    // Runs mordhost from a shell in the directory of the test.
    ProcessResult Shell(const std::string& arguments) const {
        return kit::RunProcess(
            {"/bin/sh", {"-c", "exec \"$0\" " + arguments, MORDHOST_PROGRAM}, "", directory.Name("")});
    }

    void ExpectRefusal(const std::string& arguments, const std::string& message) const {
        const ProcessResult result = Shell(arguments);
        EXPECT_EQ(result.code, 2) << arguments;
        EXPECT_EQ(result.error, "mordhost: " + message + "\n");
        EXPECT_EQ(directory.Read("e.jsonl"), "{}\n") << arguments;
    }
};

} // namespace

TEST_F(FilesApartPosix, TheStandardStreamsAreCheckedToo) {
    ExpectRefusal("replay p.json e.jsonl >> e.jsonl", "the standard output and the events e.jsonl are the same file");
    ExpectRefusal("replay p.json - < e.jsonl >> e.jsonl",
                  "the standard output and the standard input are the same file");
    ExpectRefusal("replay p.json - --reports e.jsonl < e.jsonl",
                  "--reports e.jsonl and the standard input are the same file");
    ExpectRefusal("replay p.json e.jsonl --log out > out", "--log out and the standard output are the same file");
    ExpectRefusal("replay p.json e.jsonl --dots /dev/stdout > out",
                  "--dots /dev/stdout and the standard output are the same file");
    ExpectRefusal("watch p.json --seconds 1 --log out > out", "--log out and the standard output are the same file");
}

TEST_F(FilesApartPosix, MessagesDoNotGoToAnOutput) {
    for (const char* const arguments :
         {"replay p.json e.jsonl --reports out 2> out", "record --seconds 1 --out out 2> out"}) {
        const ProcessResult result = Shell(arguments);
        EXPECT_EQ(result.code, 2) << arguments;
        EXPECT_NE(directory.Read("out").find(" out are the same file\n"), std::string::npos) << directory.Read("out");
    }
    EXPECT_EQ(Shell("replay p.json e.jsonl > both 2>&1").code, 0) << "they may go to the standard output";
}

TEST_F(FilesApartPosix, NoOutputOfAWatchOverwritesAnInput) {
    ExpectRefusal("watch p.json --seconds 1 --reports p.json",
                  "--reports p.json and the policy p.json are the same file");
    ExpectRefusal("watch p.json --seconds 1 --dots p.json", "--dots p.json and the policy p.json are the same file");
    ExpectRefusal("watch p.json --seconds 1 --reports new --log new", "--log new and --reports new are the same file");
    EXPECT_FALSE(directory.Has("new"));
}

TEST_F(FilesApartPosix, NoOutputOverwritesAnInputThroughALink) {
    std::filesystem::create_symlink("e.jsonl", directory.Path() / "link");
    ExpectRefusal("replay p.json e.jsonl --log link", "--log link and the events e.jsonl are the same file");
    std::filesystem::create_symlink("none", directory.Path() / "first");
    std::filesystem::create_symlink("first", directory.Path() / "second");
    ExpectRefusal("replay p.json e.jsonl --log none --reports second",
                  "--log none and --reports second are the same file");
    EXPECT_FALSE(directory.Has("none"));
}

TEST_F(FilesApartPosix, DotsReplaceNeitherDevicesNorPipes) {
    const std::string device = directory.Name("device");
    const std::string pipe = directory.Name("pipe");
    ASSERT_EQ(mknod(device.c_str(), S_IFCHR | 0600, makedev(0, 0)), 0); // a device without a driver
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ExpectRefusal("replay p.json e.jsonl --dots device", "cannot replace device: it is a device, not a file");
    ExpectRefusal("watch p.json --seconds 1 --dots pipe", "cannot replace pipe: it is a pipe, not a file");
    EXPECT_TRUE(std::filesystem::is_character_file(device));
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(FilesApartPosix, DevicesMayBeSharedByOutputs) {
    EXPECT_EQ(Shell("replay p.json e.jsonl --reports /dev/null --log /dev/null > /dev/null").code, 0);
}

TEST_F(FilesApartPosix, EventsMayComeThroughANamedPipe) {
    const std::string pipe = directory.Name("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    kit::BackgroundProcess process({MORDHOST_PROGRAM, {"replay", directory.Name("p.json"), pipe}, "", ""});
    std::ofstream(pipe) << "{}\n"; // opens when the other end is opened
    const ProcessResult result = process.Wait();
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_NE(result.output.find("\n1 event: 1 block\n"), std::string::npos) << result.output;
}
