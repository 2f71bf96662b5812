#include <gtest/gtest.h>

#include "unit/siblings/temporaryFolder.h"
#include "zelkBase/machineIdFile.h"

namespace siblings {

namespace {

const std::string id = "3d1219c7c4c5404aaa1f6d2a48adfda4";

class MachineIdFileTest : public testing::Test {
protected:
    std::string Read(const std::string& bytes) const {
        const std::filesystem::path file = folder.Path() / "machine-id";
        siblingTest::WriteFile(file, bytes);
        return ReadMachineIdFile(file.c_str());
    }

    const siblingTest::TemporaryFolder folder;
};

TEST_F(MachineIdFileTest, givesTheDigitsWithAndWithoutALineFeed) {
    EXPECT_EQ(Read(id + "\n"), id);
    EXPECT_EQ(Read(id), id);
}

TEST_F(MachineIdFileTest, givesNothingForAFileThatIsNotThere) {
    EXPECT_EQ(ReadMachineIdFile((folder.Path() / "none").c_str()), "");
}

TEST_F(MachineIdFileTest, givesNothingForADirectory) {
    EXPECT_EQ(ReadMachineIdFile(folder.Path().c_str()), "");
}

TEST_F(MachineIdFileTest, givesNothingForASystemThatHasNotStartedUpYet) {
    EXPECT_EQ(Read("uninitialized\n"), "");
    EXPECT_EQ(Read(""), "");
    EXPECT_EQ(Read("\n"), "");
}

TEST_F(MachineIdFileTest, givesNothingForTextThatIsNoId) {
    EXPECT_EQ(Read(id.substr(1) + "\n"), "") << "too short";
    EXPECT_EQ(Read(id + "0\n"), "") << "too long";
    EXPECT_EQ(Read(id + "\n\n"), "");
    EXPECT_EQ(Read(id + "\nmore"), "");
    EXPECT_EQ(Read(" " + id.substr(1)), "");
    EXPECT_EQ(Read("g" + id.substr(1)), "");
    EXPECT_EQ(Read("3d1219c7-c4c5-404a-aa1f-6d2a48adfda4"), "");
    EXPECT_EQ(Read(std::string(32, '0') + "\n"), "") << "no machine has this one";
}

} // namespace

} // namespace siblings
