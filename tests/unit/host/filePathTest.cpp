#include "document/filePath.h"

#include <gtest/gtest.h>

#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using mordhostTest::TemporaryDirectory;

namespace {

template <typename Act>
std::string FileErrorOf(Act act) {
    try {
        act();
    } catch (const FileError& error) {
        return error.what();
    }
    return "done";
}

} // namespace

TEST(FilePath, ANameInUtf8LeadsToItsFile) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("p\xC3\xB6\xE2\x82\xAC.json");
    directory.Write("p\xC3\xB6\xE2\x82\xAC.json", "text");
    EXPECT_TRUE(std::filesystem::exists(directory.Path() / u8"p\u00f6\u20ac.json"));
    EXPECT_EQ(ReadWholeFile(name), "text");
    EXPECT_EQ(Utf8Of(PathOf(name).filename()), "p\xC3\xB6\xE2\x82\xAC.json");
}

TEST(FilePath, AFileIsReadByteForByte) {
    const TemporaryDirectory directory;
    const std::string bytes("a\r\nb\x1A\0c\xFF", 8);
    EXPECT_EQ(ReadWholeFile(directory.Write("x", bytes)), bytes);
}

TEST(FilePath, AFileThatIsNotThereIsAnError) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("none");
    EXPECT_EQ(FileErrorOf([&] { ReadWholeFile(name); }), "cannot read " + name + ": No such file or directory");
}

TEST(FilePath, ADirectoryIsNoFile) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("");
    EXPECT_EQ(FileErrorOf([&] { ReadWholeFile(name); }), "cannot read " + name + ": it is a directory");
}
