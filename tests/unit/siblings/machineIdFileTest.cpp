#include <gtest/gtest.h>

#include "kit/system/temporaryDirectory.h"
#include "zelkBase/machineIdFile.h"

namespace siblings {

namespace {

const std::string id = "3d1219c7c4c5404aaa1f6d2a48adfda4";

class MachineIdFileTest : public testing::Test {
protected:
    std::string Read(const std::string& bytes) const {
        return ReadMachineIdFile(folder.Write("machine-id", bytes).c_str());
    }

    const kit::TemporaryDirectory folder;
};

TEST_F(MachineIdFileTest, acceptsAnIdWithAndWithoutALineFeed) {
    EXPECT_EQ(Read(id + "\n"), id);
    EXPECT_EQ(Read(id), id);
}

TEST_F(MachineIdFileTest, returnsNothingWithoutAReadableFile) {
    EXPECT_EQ(ReadMachineIdFile(folder.Name("none").c_str()), "");
    EXPECT_EQ(ReadMachineIdFile(folder.Path().c_str()), "");
}

TEST_F(MachineIdFileTest, returnsNothingBeforeTheFirstBoot) {
    EXPECT_EQ(Read("uninitialized\n"), "");
    EXPECT_EQ(Read(""), "");
    EXPECT_EQ(Read("\n"), "");
}

TEST_F(MachineIdFileTest, returnsNothingForAMalformedId) {
    EXPECT_EQ(Read(id.substr(1) + "\n"), "") << "too short";
    EXPECT_EQ(Read(id + "0\n"), "") << "too long";
    EXPECT_EQ(Read(id + "\n\n"), "");
    EXPECT_EQ(Read(id + "\nmore"), "");
    EXPECT_EQ(Read(" " + id.substr(1)), "");
    EXPECT_EQ(Read("g" + id.substr(1)), "");
    EXPECT_EQ(Read("3d1219c7-c4c5-404a-aa1f-6d2a48adfda4"), "");
    EXPECT_EQ(Read(std::string(32, '0') + "\n"), "") << "the null id";
}

} // namespace

} // namespace siblings
