#include "system/replaceFile.h"

#include <gtest/gtest.h>

#include "unit/host/replacementOf.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;
using mordhostTest::ReplacementOf;

namespace {

size_t FileCount(const TemporaryDirectory& directory) {
    const std::filesystem::directory_iterator files(directory.Path());
    return static_cast<size_t>(std::distance(begin(files), end(files)));
}

} // namespace

TEST(ReplaceFile, ReplacesTheWholeText) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("d\u00f6\u20ac.json", "a rather long old text");
    ReplaceWholeFile(name, "new");
    EXPECT_EQ(directory.Read("d\u00f6\u20ac.json"), "new");
    EXPECT_EQ(FileCount(directory), 1U) << "nothing is left beside it";
}

TEST(ReplaceFile, CreatesAnAbsentFile) {
    const TemporaryDirectory directory;
    ReplaceWholeFile(directory.Name("dots.json"), "new");
    EXPECT_EQ(directory.Read("dots.json"), "new");
    EXPECT_EQ(FileCount(directory), 1U);
}

TEST(ReplaceFile, AFailureLeavesTheOldFileAndNoOther) {
    const TemporaryDirectory directory;
    const std::string longest(255, 'd'); // the temporary file has a longer name
    const std::string name = directory.Write(longest, "old");
    EXPECT_EQ(ReplacementOf(name).rfind("cannot write " + name + ": ", 0), 0U) << ReplacementOf(name);
    EXPECT_EQ(directory.Read(longest), "old");
    EXPECT_EQ(FileCount(directory), 1U);
}

TEST(ReplaceFile, ADirectoryIsNotReplaced) {
    const TemporaryDirectory directory;
    std::filesystem::create_directory(directory.Path() / "dots.json");
    const std::string name = directory.Name("dots.json");
    EXPECT_EQ(ReplacementOf(name), "cannot replace " + name + ": it is a directory, not a file");
    EXPECT_EQ(FileCount(directory), 1U);
}

TEST(ReplaceFile, FailsWithoutADirectory) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("no/such/dots.json");
    EXPECT_EQ(ReplacementOf(name), "cannot write " + name + ": No such file or directory");
}

TEST(ReplaceFile, KeepsAFileWithASimilarName) {
    const TemporaryDirectory directory;
    directory.Write("dots.json.mordhost-new", "of somebody else");
    ReplaceWholeFile(directory.Write("dots.json", "old"), "new");
    EXPECT_EQ(directory.Read("dots.json.mordhost-new"), "of somebody else");
    EXPECT_EQ(directory.Read("dots.json"), "new");
}
