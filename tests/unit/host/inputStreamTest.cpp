#include "system/inputStream.h"

#include <gtest/gtest.h>

#include "system/fileError.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;

namespace {

// The message of the FileError at the opening of the file, or "opened".
std::string OpeningErrorOf(const std::string& name) {
    try {
        InputStream input(name);
    } catch (const FileError& error) {
        return error.what();
    }
    return "opened";
}

} // namespace

TEST(InputStream, ReadsAFileByteForByte) {
    const TemporaryDirectory directory;
    const std::string bytes("a\r\nb\x1A\0c\xFF", 8);
    EXPECT_EQ(InputStream(directory.Write("p\xC3\xB6\xE2\x82\xAC", bytes)).ReadAll(), bytes);
}

TEST(InputStream, ReadsAFileThatIsLargerThanItsBuffer) {
    const TemporaryDirectory directory;
    const std::string text(200000, 'x');
    InputStream input(directory.Write("x", text));
    EXPECT_TRUE(input.IsRegular());
    EXPECT_EQ(input.Size(), text.size());
    EXPECT_EQ(input.ReadAll(), text);
    EXPECT_EQ(input.Done(), text.size());
}

TEST(InputStream, ReadsTheRestAfterALine) {
    const TemporaryDirectory directory;
    InputStream input(directory.Write("x", "first\nsecond\nthird"));
    std::string line;
    std::getline(input.Stream(), line);
    EXPECT_EQ(line, "first");
    EXPECT_EQ(input.ReadAll(), "second\nthird");
}

TEST(InputStream, FailsForAMissingFileAndForADirectory) {
    const TemporaryDirectory directory;
    EXPECT_EQ(OpeningErrorOf(directory.Name("none")),
              "cannot read " + directory.Name("none") + ": No such file or directory");
    EXPECT_EQ(OpeningErrorOf(directory.Name("")), "cannot read " + directory.Name("") + ": it is a directory");
}
